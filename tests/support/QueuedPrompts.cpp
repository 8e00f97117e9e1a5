// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/QueuedPrompts.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace {

std::string Description(const Question& question) {
    constexpr std::array kKinds = {"box", "input box", "open dialog", "save dialog", "folder dialog"};
    std::string text = kKinds.at(static_cast<std::size_t>(question.kind));
    text += " \"" + question.title + "\"";
    if (question.text)
        text += ": \"" + *question.text + "\"";
    if (question.style)
        text += ", style " + std::to_string(*question.style);
    return text;
}

bool Meets(const Question& asked, const Question& expected) {
    return asked.kind == expected.kind && asked.title == expected.title &&
           (!expected.text || asked.text == expected.text) &&
           (!expected.style || asked.style == expected.style);
}

} // namespace

Question Box(std::string title, std::string text) {
    return {Question::Kind::Box, std::move(title), std::move(text), {}};
}

Question Box(std::string title, std::string text, int style) {
    return {Question::Kind::Box, std::move(title), std::move(text), style};
}

Question Input(std::string title, std::string prompt) {
    return {Question::Kind::Input, std::move(title), std::move(prompt), {}};
}

Question OpenFile(std::string title) {
    return {Question::Kind::OpenFile, std::move(title), {}, {}};
}

Question SaveFile(std::string title) {
    return {Question::Kind::SaveFile, std::move(title), {}, {}};
}

Question Folder(std::string title) {
    return {Question::Kind::Folder, std::move(title), {}, {}};
}

Question Folder(std::string title, std::string startFolder) {
    return {Question::Kind::Folder, std::move(title), std::move(startFolder), {}};
}

QueuedPrompts::~QueuedPrompts() {
    for (const Expectation& expectation : mExpectations)
        ADD_FAILURE() << "never asked: " << Description(expectation.question);
}

void QueuedPrompts::Expect(Question question, std::function<void()> meanwhile) {
    mExpectations.push_back({std::move(question), MsgBoxAnswer::OK, {}, std::move(meanwhile)});
}

void QueuedPrompts::Expect(Question question, MsgBoxAnswer answer, std::function<void()> meanwhile) {
    mExpectations.push_back({std::move(question), answer, {}, std::move(meanwhile)});
}

void QueuedPrompts::Expect(Question question, std::string answer, std::function<void()> meanwhile) {
    mExpectations.push_back({std::move(question), MsgBoxAnswer::OK, std::move(answer), std::move(meanwhile)});
}

void QueuedPrompts::Expect(Question question, const char* answer, std::function<void()> meanwhile) {
    Expect(std::move(question), std::string(answer), std::move(meanwhile));
}

std::optional<QueuedPrompts::Expectation> QueuedPrompts::Take(const Question& asked) {
    if (mExpectations.empty() || !Meets(asked, mExpectations.front().question)) {
        ADD_FAILURE() << "asked:    " << Description(asked) << "\nexpected: "
                      << (mExpectations.empty() ? "nothing" : Description(mExpectations.front().question));
        return std::nullopt;
    }
    Expectation taken = std::move(mExpectations.front());
    mExpectations.pop_front();
    if (taken.meanwhile)
        taken.meanwhile();
    return taken;
}

MsgBoxAnswer QueuedPrompts::MsgBox(const std::string& text, int style, const std::string& title) {
    constexpr int kButtonsMask = 7;
    const bool isQuestion = (style & kButtonsMask) == MsgBoxStyle::kYesNo;
    const auto taken = Take({Question::Kind::Box, title, text, style});
    if (!taken)
        return isQuestion ? MsgBoxAnswer::No : MsgBoxAnswer::OK;
    EXPECT_EQ(taken->answer != MsgBoxAnswer::OK, isQuestion)
        << "the answer has no button in the " << Description({Question::Kind::Box, title, text, style});
    return taken->answer;
}

std::string QueuedPrompts::TextFor(const Question& asked) {
    const auto taken = Take(asked);
    return taken ? taken->text : std::string();
}

std::string QueuedPrompts::InputBox(const std::string& prompt, const std::string& title,
                                    const std::string& /*initial*/) {
    return TextFor({Question::Kind::Input, title, prompt, {}});
}

std::string QueuedPrompts::OpenFile(const FileDialog& dialog) {
    mFileDialogs.push_back(dialog);
    return TextFor({Question::Kind::OpenFile, dialog.title, {}, {}});
}

std::string QueuedPrompts::SaveFile(const FileDialog& dialog) {
    mFileDialogs.push_back(dialog);
    return TextFor({Question::Kind::SaveFile, dialog.title, {}, {}});
}

std::string QueuedPrompts::BrowseForFolder(const std::string& title, const std::string& startFolder) {
    return TextFor({Question::Kind::Folder, title, startFolder, {}});
}
