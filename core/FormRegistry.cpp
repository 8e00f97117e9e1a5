// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FormRegistry.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QWidget>

#include <algorithm>
#include <utility>

FormRegistry& FormRegistry::Instance() {
    static FormRegistry registry;
    return registry;
}

void FormRegistry::Load(const std::string& name, QWidget* window, std::function<void()> unload) {
    mForms.push_back({name, window, std::move(unload)});
}

void FormRegistry::Unloaded(QWidget* window) {
    if (std::erase_if(mForms, [&](const Form& form) { return form.window == window; }) != 0)
        QueueHandlerIfEmpty();
}

void FormRegistry::QueueHandlerIfEmpty() {
    if (!mForms.empty() || !mOnLastUnloaded)
        return;
    // Not at once: a handler of the window that has just gone is still running.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [this] {
            if (mForms.empty() && mOnLastUnloaded)
                mOnLastUnloaded();
        },
        Qt::QueuedConnection);
}

bool FormRegistry::IsLoaded(const std::string& name) const {
    return Find(name) != nullptr;
}

QWidget* FormRegistry::Find(const std::string& name) const {
    const auto form =
        std::find_if(mForms.begin(), mForms.end(), [&](const Form& entry) { return entry.name == name; });
    return form == mForms.end() ? nullptr : form->window;
}

void FormRegistry::Unload(const std::string& name) {
    const auto form =
        std::find_if(mForms.begin(), mForms.end(), [&](const Form& entry) { return entry.name == name; });
    if (form == mForms.end())
        return;
    // A copy, since unloading removes the entry.
    const std::function<void()> unload = form->unload;
    unload();
}

void FormRegistry::UnloadOthers(const QWidget* keep) {
    // Unloading one window may unload others, so each is looked up anew.
    std::vector<QWidget*> windows = Windows();
    std::reverse(windows.begin(), windows.end());
    for (QWidget* const window : windows) {
        const auto form = std::find_if(mForms.begin(), mForms.end(),
                                       [&](const Form& entry) { return entry.window == window; });
        if (window == keep || form == mForms.end())
            continue;
        const std::function<void()> unload = form->unload;
        unload();
    }
}

std::vector<QWidget*> FormRegistry::Windows() const {
    std::vector<QWidget*> windows;
    windows.reserve(mForms.size());
    for (const Form& form : mForms)
        windows.push_back(form.window);
    return windows;
}

void FormRegistry::OnLastUnloaded(std::function<void()> handler) {
    mOnLastUnloaded = std::move(handler);
    QueueHandlerIfEmpty();
}
