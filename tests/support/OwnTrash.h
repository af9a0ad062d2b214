#pragma once

#include <string>

#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

/// Takes what is moved to the trash while it lives, for never must a test touch the user's. Windows keeps its own bin,
/// which under wine lies in the build folder as long as no test changes the variable.
class OwnTrash {
public:
    /// Absolute path of something in the trash, by the name that it has there.
    std::string operator/(const std::string& name) const { return folder / ("Trash/files/" + name); }

private:
    TempFolder folder;
#ifndef _WIN32
    ScopedVariable dataHome{"XDG_DATA_HOME", folder.Path().string()};
#endif
};
