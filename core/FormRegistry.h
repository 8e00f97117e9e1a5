// SPDX-License-Identifier: GPL-3.0-or-later
// Knows every loaded window, hidden ones too, in the order of loading. It serves FormIsLoaded and the
// unloading of all windows, and it ends the program when the last window is unloaded: a window that is
// loaded but hidden keeps it alive, which Qt's own rule does not.
// The registry owns nothing: a window enters itself in its constructor and leaves in its destructor.
#pragma once

#include <functional>
#include <string>
#include <vector>

class QWidget;

class FormRegistry {
public:
    /// The registry of the running program.
    static FormRegistry& Instance();

    /// `unload` closes and destroys the window; it may be called from within one of its own handlers.
    void Load(const std::string& name, QWidget* window, std::function<void()> unload);
    /// The window is gone. After the last one, OnLastUnloaded runs, if the event loop may end.
    void Unloaded(QWidget* window);

    bool IsLoaded(const std::string& name) const;
    QWidget* Find(const std::string& name) const;
    /// Unloads the window of this name; nothing happens where there is none.
    void Unload(const std::string& name);
    /// Unloads all windows but `keep`, the last loaded first.
    void UnloadOthers(const QWidget* keep);
    /// The windows now loaded, oldest first.
    std::vector<QWidget*> Windows() const;

    /// Called when no window is left.
    void OnLastUnloaded(std::function<void()> handler);

private:
    struct Form {
        std::string name;
        QWidget* window;
        std::function<void()> unload;
    };
    std::vector<Form> mForms;
    std::function<void()> mOnLastUnloaded;
};
