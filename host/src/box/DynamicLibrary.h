#pragma once

#include <filesystem>
#include <string>

namespace velmohost {

/// The system's loader of plug-in binaries. A library once loaded stays: its classes, symbols and functions are in use
/// until the program ends.
class DynamicLibrary {
public:
    /// Loads `path`. Functions that the library lacks are looked for when first called, so that a plug-in loads
    /// although the host does not offer everything that it names.
    /// @param error takes the system's reason when it fails
    /// @returns the library, empty when it could not be loaded
    static DynamicLibrary Load(const std::filesystem::path& path, std::string& error);

    explicit operator bool() const { return handle != nullptr; }

    /// The address of an exported function, null when there is none of that name.
    void* FindFunction(const char* name) const;

private:
    void* handle = nullptr;
};

/// The folder that the running program lies in; empty when the system does not tell.
std::filesystem::path GetProgramFolder();

/// The binary within a plug-in's file: the file itself, or where plug-ins are bundles the executable inside.
std::filesystem::path GetPluginBinary(const std::filesystem::path& pluginFile);

}  // namespace velmohost
