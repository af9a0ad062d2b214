#pragma once

#include "text/VelmoDspString.h"
#include "text/VelmoDspStringArray.h"

namespace velmodsp {

/// The absolute, normalised path of a file or folder.
///
///     File take("~/sounds/take.wav");
///     take.OverwriteIfNeeded(true);            // an existing take goes to the trash
///     String peaks = take.GetChildFile("../peaks.txt");
///
/// "/" is the separator on every system, and paths are UTF-8. Functions that only look at the path never touch the file
/// system. Queries never throw; the actions throw `Exception`. Any thread, one at a time per object; never the audio
/// thread.
class File {
public:
    /// "/"
    static const String SeparatorString;

    /// The path that `parseAbsolutePath` makes of `path`.
    File(const String& path);

    /// Drops blanks around the path and backslashes before blanks, expands a leading "~" or "~user", puts the working
    /// directory before a relative path, and drops separators at the end. An empty path stays empty; "~user" of an
    /// unknown user stays as it is.
    static String parseAbsolutePath(const String& path);

    const String& GetFullPathName() const { return fullPath; }
    /// What follows the last separator.
    String GetFileName() const;
    /// From the last "." of the file name on, "." included; "" without one.
    String GetFileExtension() const;
    /// Path of the folder that this is in; of the root, the root.
    String GetParentDirectory() const;
    /// Path of something in this folder. Leading "./" and "../" are resolved; a path that starts with "/" or "~" is
    /// taken as absolute.
    String GetChildFile(const String& relative) const;

    /// Whether the extension is one of those listed with blanks between them, such as "wav .AIF"; case and a leading
    /// "." do not matter. An empty list asks whether there is no extension.
    bool HasFileExtension(const String& extensions) const;
    /// Whether `HasFileExtension` holds for one item of the list at least.
    bool HasOneOfTheseExtensions(const StringArray& extensions) const;

    /// Whether there is something at this path that is no folder.
    bool ExistsAsFile() const;
    /// Deletes the file or the empty folder at once. True when nothing is left there.
    bool DeleteFile() const;
    /// Makes this folder and all folders above it. True when it is there afterwards.
    /// @throws Exception when the path leads to no root that exists
    bool CreateDirectory() const;
    /// Makes the folder that this path is in. True when it is there afterwards.
    bool CreateDirectoryFor() const;
    /// Makes way for a file to be written at this path: an existing file goes to the trash.
    /// @param overwrite whether that is allowed
    /// @return true
    /// @throws Exception when the path is a folder, when a file is there and must stay, or when it cannot be moved
    bool OverwriteIfNeeded(bool overwrite) const;
    /// Moves the file to the user's trash, on every system.
    bool macMoveToTrash() const;

    /// "" when the process has none.
    static String GetCurrentWorkingDirectory();
    /// What the variable "HOME" says, else "home", else the system where it sets neither, else the working directory.
    static String GetUserHomeDirectory();

private:
    String fullPath;
};

}  // namespace velmodsp
