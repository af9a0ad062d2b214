// The package as it is installed: its files, and a help patch that a host can open and an object understands.

#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "VelmoHost.h"
#include "support/CapturedWindow.h"
#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace velmohost {
namespace {

using nlohmann::json;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

json ReadPackageJson(const std::string& name) {
    return json::parse(ReadBytes(std::string(VELMO_PACKAGE_DIR) + "/" + name));
}

/// A tab of the help patch: its boxes by their ids, and its cords.
struct Tab {
    explicit Tab(const json& tab) : patcher(tab), lines(tab.at("lines")) {
        for (const json& element : tab.at("boxes")) boxes[element.at("box").at("id")] = element.at("box");
    }
    const json& BoxAt(const json& end) const { return boxes.at(end.at(0)); }

    json patcher;
    std::map<std::string, json> boxes;
    json lines;
};

std::vector<Tab> ReadTabs() {
    std::vector<Tab> tabs;
    const json file = ReadPackageJson("help/tesk.fixnan~.maxhelp");
    for (const json& element : file.at("patcher").at("boxes")) tabs.emplace_back(element.at("box").at("patcher"));
    return tabs;
}

bool IsOurs(const json& box) {
    return box.value("text", "").starts_with("tesk.fixnan~") && box["maxclass"] == "newobj";
}

TEST(Package, HasWhatItsInfoNames) {
    const json info = ReadPackageJson("package-info.json");
    for (const char* key : {"name", "displayname", "version", "author", "description", "tags", "website",
                            "max_version_min", "max_version_max", "os", "package_extra", "filelist"}) {
        EXPECT_TRUE(info.contains(key)) << key;
    }
    for (const json& name : info["filelist"]["help"]) ReadPackageJson("help/" + name.get<std::string>());
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(VELMO_PACKAGE_DIR)) {
        names.insert(entry.path().filename().string());
    }
    EXPECT_EQ(names, (std::set<std::string>{"LICENSE", "README.md", "docs", "externals", "help", "icon.png",
                                            "package-info.json"}));
    // The object's own version and the package's come from one place.
    velmotest::CapturedWindow window;
    Host host{{VELMO_EXTERNALS_DIR}};
    Box::Create(host, "tesk.fixnan~")->Send("version");
    EXPECT_THAT(window.Take(), Contains(HasSubstr("Version " + info["version"].get<std::string>() + " (Build ")));
    EXPECT_THAT(ReadBytes(std::string(VELMO_PACKAGE_DIR) + "/docs/tesk.fixnan~.maxref.xml"),
                HasSubstr("name=\"tesk.fixnan~\""));
}

TEST(HelpPatch, HoldsTogether) {
    const json top = ReadPackageJson("help/tesk.fixnan~.maxhelp").at("patcher");
    const std::vector<Tab> tabs = ReadTabs();
    ASSERT_EQ(tabs.size(), 4u);
    for (const json& patcher : {top, tabs[0].patcher, tabs[1].patcher, tabs[2].patcher, tabs[3].patcher}) {
        for (const char* key : {"fileversion", "rect", "bglocked", "openinpresentation", "default_fontsize",
                                "default_fontface", "default_fontname", "gridonopen", "gridsize", "gridsnaponopen",
                                "toolbarvisible", "boxanimatetime", "boxes", "lines"}) {
            EXPECT_TRUE(patcher.contains(key)) << key;
        }
    }
    for (const Tab& tab : tabs) {
        EXPECT_EQ(tab.boxes.size(), tab.patcher["boxes"].size()) << "an id occurs twice";
        for (const auto& [id, box] : tab.boxes) {
            EXPECT_EQ(box.contains("outlettype"), box["numoutlets"] > 0) << box;
            EXPECT_EQ(box.value("outlettype", json::array()).size(), box["numoutlets"]) << box;
        }
        for (const json& line : tab.lines) {
            const json &source = line["patchline"]["source"], &destination = line["patchline"]["destination"];
            EXPECT_LT(source[1], tab.BoxAt(source)["numoutlets"]);
            EXPECT_LT(destination[1], tab.BoxAt(destination)["numinlets"]);
        }
    }
}

TEST(HelpPatch, EveryObjectCanBeCreatedAndUnderstandsItsMessages) {
    const TempFolder home;  // for the reference page
    const ScopedVariable variable("HOME", home.Path().string());
    velmotest::CapturedWindow window;
    Host host{{VELMO_EXTERNALS_DIR}};
    std::set<std::string> selectors;
    for (const Tab& tab : ReadTabs()) {
        int numOurs = 0;
        for (const auto& [id, box] : tab.boxes) {
            if (!IsOurs(box)) continue;
            ++numOurs;
            const std::unique_ptr<Box> object = Box::Create(host, box["text"]);
            ASSERT_TRUE(object) << box["text"];
            EXPECT_EQ(object->NumInlets(), box["numinlets"]);
            EXPECT_EQ(object->NumOutlets(), box["numoutlets"]);
            for (const json& line : tab.lines) {
                const json& source = tab.BoxAt(line["patchline"]["source"]);
                if (line["patchline"]["destination"][0] != id || source["maxclass"] != "message") continue;
                std::string text = source["text"];
                if (const std::size_t at = text.find("$1"); at != std::string::npos) text.replace(at, 2, "0.5");
                selectors.insert(text.substr(0, text.find(' ')));
                EXPECT_TRUE(object->Send(text)) << text;
            }
            EXPECT_THAT(window.Take(), Each(Not(HasSubstr("setvalueof error"))));
        }
        EXPECT_EQ(numOurs, 1);
    }
    EXPECT_THAT(selectors, IsSupersetOf({"clear", "version", "postattributes", "postdspstate", "postdspstatus",
                                         "dumpdict", "dictionary", "exportdict", "preset", "recallpreset",
                                         "generatexml", "mode", "replaceby"}));
}

}  // namespace
}  // namespace velmohost
