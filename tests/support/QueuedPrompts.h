// SPDX-License-Identifier: GPL-3.0-or-later
// Answers questions from a queue. A question that was not expected fails the test, and so does one that was
// expected and never came:
//     prompts.Expect(Box("Replace?", "Replace this backup file?"), MsgBoxAnswer::No);
//     prompts.Expect(SaveFile("Please enter backup filename"), path);
#pragma once

#include "platform/prompts.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// A question as a test expects it. What is not given is not looked at.
struct Question {
    enum class Kind { Box, Input, OpenFile, SaveFile, Folder };
    Kind kind;
    std::string title;
    std::optional<std::string> text;
    std::optional<int> style;
};

Question Box(std::string title, std::string text);
/// The style as the sum of MsgBoxStyle numbers.
Question Box(std::string title, std::string text, int style);
Question Input(std::string title, std::string prompt);
Question OpenFile(std::string title);
Question SaveFile(std::string title);
Question Folder(std::string title);
/// A folder dialog that starts at `startFolder`.
Question Folder(std::string title, std::string startFolder);

class QueuedPrompts : public Prompts {
public:
    /// Fails the test where expected questions are left.
    ~QueuedPrompts() override;

    /// A box answered OK, or any other question answered by cancel. `meanwhile` runs while the question is
    /// open, to look at what stands behind it.
    void Expect(Question question, std::function<void()> meanwhile = {});
    void Expect(Question question, MsgBoxAnswer answer, std::function<void()> meanwhile = {});
    /// The text typed or the path chosen.
    void Expect(Question question, std::string answer, std::function<void()> meanwhile = {});
    void Expect(Question question, const char* answer, std::function<void()> meanwhile = {});

    /// The file dialogs that were shown, to look at their filters and folders.
    const std::vector<FileDialog>& FileDialogs() const { return mFileDialogs; }
    int Beeps() const { return mBeeps; }

    MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) override;
    std::string InputBox(const std::string& prompt, const std::string& title,
                         const std::string& initial) override;
    std::string OpenFile(const FileDialog& dialog) override;
    std::string SaveFile(const FileDialog& dialog) override;
    std::string BrowseForFolder(const std::string& title, const std::string& startFolder) override;
    void Beep() override { ++mBeeps; }

private:
    struct Expectation {
        Question question;
        MsgBoxAnswer answer;
        std::string text;
        std::function<void()> meanwhile;
    };

    /// The expectation that `asked` meets, taken off the queue; nothing, and a failed test, for any other.
    std::optional<Expectation> Take(const Question& asked);
    std::string TextFor(const Question& asked);

    std::deque<Expectation> mExpectations;
    std::vector<FileDialog> mFileDialogs;
    int mBeeps = 0;
};
