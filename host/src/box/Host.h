#pragma once

#include <string>
#include <vector>

#include "box/PluginLoader.h"

namespace velmohost {

/// The host as its user sees it: where plug-ins come from, and what runs. One at a time; main thread.
class Host {
public:
    /// @param pluginFolders searched before the externals of the package that lies beside the program
    explicit Host(const std::vector<std::string>& pluginFolders = {});

    /// Finds the plug-ins' classes.
    PluginLoader& Loader() { return loader; }

private:
    PluginLoader loader;
};

}  // namespace velmohost
