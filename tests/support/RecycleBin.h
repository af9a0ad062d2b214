#pragma once

#include <string>

/// How many files are in the recycle bin of the drive that a path is on. Windows only.
long long NumFilesInRecycleBin(const std::string& path);
