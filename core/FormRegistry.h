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
    /// The window is gone; a window that is not entered is none of the registry's business.
    void Unloaded(QWidget* window);

    bool IsLoaded(const std::string& name) const;
    QWidget* Find(const std::string& name) const;
    /// Unloads the window of this name; nothing happens where there is none.
    void Unload(const std::string& name);
    /// Unloads all windows but `keep`, the last loaded first. A window that refuses stays.
    void UnloadOthers(const QWidget* keep);
    /// The windows now loaded, oldest first.
    std::vector<QWidget*> Windows() const;

    /// To be given when the start-up is over. From then on `handler` is called by the event loop when no
    /// window is left, and so at its first turn if none is loaded already: the splash may have been the only
    /// one, and may have gone while the start-up was still at work.
    void OnLastUnloaded(std::function<void()> handler);

private:
    struct Form {
        std::string name;
        QWidget* window;
        std::function<void()> unload;
    };
    void QueueHandlerIfEmpty();

    std::vector<Form> mForms;
    std::function<void()> mOnLastUnloaded;
};
