// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileModule.h"

#include "core/FormRegistry.h"
#include "platform/errors.h"
#include "platform/prompts.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace FileModule {

std::string ShowOpenDialog(Prompts& prompts, const std::string& filter, const std::string& title,
                           const std::string& defaultExtension, const std::string& folder) {
    return prompts.OpenFile({filter, title, defaultExtension, folder});
}

std::string ShowSaveDialog(Prompts& prompts, const std::string& filter, const std::string& title,
                           const std::string& defaultExtension, const std::string& folder) {
    return prompts.SaveFile({filter, title, defaultExtension, folder});
}

std::string BrowseForFolder(Prompts& prompts, const std::string& title, const std::string& startFolder) {
    return prompts.BrowseForFolder(title, startFolder);
}

void CreateEmptyFile(const std::string& path) {
    constexpr mode_t kUsualRights = 0666; // less what the user's mask takes away
    if (unlink(path.c_str()) != 0 && errno != ENOENT)
        RaiseSystem(errno, path);
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kUsualRights);
    if (file < 0) {
        // The folder is missing: a file that is to be made can't itself be.
        if (errno == ENOENT)
            Raise(Errors::kPathNotFound, path);
        RaiseSystem(errno, path);
    }
    close(file);
}

bool FormIsLoaded(const std::string& name) {
    return FormRegistry::Instance().IsLoaded(name);
}

} // namespace FileModule
