#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/OutputOf.h"

namespace {

const std::string pluginPath = std::string(VELMO_EXTERNALS_DIR) + "/tesk.fixnan~" VELMO_EXTERNAL_SUFFIX;

/// The names that the host exports to plug-ins, from the lists that its import libraries are made from.
std::set<std::string> HostFunctions() {
    const std::filesystem::path exports = VELMO_PROJECT_DIR "/host/exports";
    std::set<std::string> names;
    for (const char* list : {"MaxAPI.def", "MaxAudio.def"}) {
        std::ifstream file(exports / list);
        for (std::string line; std::getline(file, line);) {
            // Functions are indented; entries of more than a name are the Windows library's own.
            if (line.starts_with("    ") && line.find(' ', 4) == line.npos) names.insert(line.substr(4));
        }
    }
    return names;
}

/// What a command prints about the plug-in, whose path is put behind it.
std::istringstream Tell(const std::string& command) {
    return std::istringstream(OutputOf(command + " '" + pluginPath + "'"));
}

/// The plug-in's dynamic symbols as `nm` lists them: kind and name, with the version of the library they come from.
std::vector<std::pair<char, std::string>> DynamicSymbols(const std::string& selection) {
    std::vector<std::pair<char, std::string>> symbols;
    std::istringstream lines = Tell("nm --dynamic --format=posix " + selection);
    char kind = 0;
    for (std::string name, rest; lines >> name >> kind; std::getline(lines, rest)) symbols.emplace_back(kind, name);
    return symbols;
}

bool IsSanitizers(const std::pair<char, std::string>& symbol) {
    return symbol.second.starts_with("__asan") || symbol.second.starts_with("__tsan");
}

TEST(Plugin, ImportsFunctionsOfTheHostAndOfTheSystemAlone) {
    const std::set<std::string> hostFunctions = HostFunctions();
    const auto imports = DynamicSymbols("--undefined-only");
    if (std::any_of(imports.begin(), imports.end(), IsSanitizers)) {
        GTEST_SKIP() << "a sanitizer stands between the plug-in and the C library";
    }
    int hostImports = 0;
    for (const auto& [kind, import] : imports) {
        const std::string name = import.substr(0, import.find('@'));
        const bool isOfTheSystem = name != import;  // a symbol version tells the library
        const bool isOptional = kind == 'w';
        EXPECT_TRUE(isOfTheSystem || isOptional || hostFunctions.contains(name)) << import;
        // The C library has functions under names of the host's: those must not have been found there.
        EXPECT_FALSE(isOfTheSystem && hostFunctions.contains(name)) << import;
        hostImports += hostFunctions.contains(name);
    }
    EXPECT_GT(hostImports, 30);
}

TEST(Plugin, NeedsTheLibrariesOfTheLanguageAlone) {
    const std::set<std::string> known{"libc", "libm", "libstdc++", "libgcc_s", "ld-linux-x86-64", "ld-linux-aarch64"};
    int numNeeded = 0;
    std::istringstream lines = Tell("readelf --wide --dynamic");
    for (std::string line; std::getline(lines, line);) {
        const std::size_t start = line.find('[');
        if (line.find("(NEEDED)") == std::string::npos || start == std::string::npos) continue;
        const std::string library = line.substr(start + 1, line.find(".so", start) - start - 1);
        const bool isSanitizers = library == "libasan" || library == "libubsan" || library == "libtsan";
        EXPECT_TRUE(known.contains(library) || isSanitizers) << line;
        ++numNeeded;
    }
    EXPECT_GE(numNeeded, 2);
}

TEST(Plugin, ExportsItsEntryPointsAlone) {
    std::set<std::string> names;
    for (const auto& [kind, name] : DynamicSymbols("--defined-only")) names.insert(name);
    EXPECT_EQ(names, (std::set<std::string>{"ext_main", "main"}));
}

TEST(Host, HasEveryFunctionThatPluginsMayImport) {
    for (const std::string& name : HostFunctions()) EXPECT_NE(dlsym(RTLD_DEFAULT, name.c_str()), nullptr) << name;
    EXPECT_EQ(HostFunctions().size(), 372u);
}

}  // namespace
