// What a browser shows of the report: the page is given a script that looks at it and leaves what it saw as JSON.

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "report/ReportPage.h"
#include "support/FileBytes.h"
#include "support/TempFolder.h"

namespace velmohost {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

constexpr const char* kLook = R"(<script>addEventListener('load', () => {
    const isShown = e => e.getBoundingClientRect().height > 0;
    const pictures = id => [...document.querySelectorAll('#' + id + ' svg')].filter(isShown).map(svg => {
        const marks = svg.querySelector('.bad, .repaired'), box = marks.getBBox(), wave = svg.querySelector('.wave').getBBox();
        return {label: svg.ariaLabel, marks: [marks.className.baseVal, box.x, box.width],
                wave: [wave.x, wave.y, wave.width, wave.height], columns: svg.viewBox.baseVal.width,
                pixels: svg.getBoundingClientRect().width};
    });
    const seen = {
        files: [...document.querySelectorAll('tr.file')].map(row => row.innerText.trim()),
        rows: [...document.querySelectorAll('tbody tr:not(.file)')].filter(isShown).map(
            row => [...row.cells].map(cell => cell.innerText.trim())),
        names: [...document.querySelectorAll('td[data-name]')].slice(0, 8).map(
            cell => getComputedStyle(cell, '::before').content),
        isTooWide: document.documentElement.scrollWidth > innerWidth,
        isDark: getComputedStyle(document.body).backgroundColor !== 'rgb(255, 255, 255)',
        whole: pictures('f1c2'),
        links: [...document.querySelectorAll('td a')].every(a => document.querySelector(a.getAttribute('href'))),
        outside: document.querySelectorAll('link, script[src], img, iframe').length,
        text: document.body.innerText,
    };
    document.querySelector('#f1c2 label:nth-of-type(3)').click();
    seen.samples = pictures('f1c2');
    const json = JSON.stringify(seen).replace(/[<>&]/g, c => '\\u00' + c.charCodeAt().toString(16));
    document.documentElement.textContent = 'SEEN' + json + 'SEEN';
});</script>)";

/// A channel of 4000 samples with 1000 bad ones from sample 1000 on, a tenth of the wave's size afterwards.
struct Channel {
    Channel() : before(4000), after(4000) {
        for (std::size_t i = 0; i < before.size(); ++i) {
            after[i] = (i % 2 == 0 ? 0.5f : -0.5f);
            before[i] = after[i];
            if (i >= 1000 && i < 2000) before[i] = NAN, after[i] = 0.05f;
        }
    }
    std::vector<float> before, after;
};

FileOutcome Repaired(const std::string& path, unsigned numChannels) {
    FileOutcome outcome;
    outcome.path = path;
    outcome.status = FileOutcome::Status::Repaired;
    outcome.output = "fixed.wav";
    outcome.scan = {path, 8000.0, 32, true, 4000, 0, std::vector<BadSamples>(numChannels)};
    return outcome;
}

class ReportPageTest : public testing::Test {
protected:
    ReportPageTest() {
        outcomes = {Repaired("<b>first & \"last\"</b>.wav", 3), Repaired("many.wav", 250)};
        outcomes[0].scan.channels[1] = {990, 4, 6, 0, 1000, 1000};
        for (BadSamples& channel : outcomes[1].scan.channels) channel = {0, 1, 0, 0, 3999, 1};
        FileOutcome clean = Repaired("clean.wav", 2), failed;
        clean.status = FileOutcome::Status::Clean;
        failed.path = "gone.wav";
        failed.error = "no such file";
        outcomes.insert(outcomes.end(), {clean, failed});
        for (const FileOutcome& outcome : outcomes) pictures.push_back(StartPictures(outcome.scan, 1000));
        const Channel channel;
        for (auto& ofFile : pictures) {
            for (ChannelPicture& picture : ofFile) picture.Add(channel.before.data(), channel.after.data(), 4000);
        }
    }

    /// What the browser shows in a window of that width.
    json Look(int width, const std::string& options = "") {
        const std::string page = FormatReport({"today", "0.05"}, outcomes, pictures);
        WriteBytes(folder / "report.html", page + kLook);
        const std::string command = "'" + std::string(VELMO_CHROMIUM) +
                                    "' --headless --no-sandbox --disable-gpu --user-data-dir='" + (folder / "profile") +
                                    "' --window-size=" + std::to_string(width) + ",800 " + options +
                                    " --dump-dom 'file://" + (folder / "report.html") + "' >'" + (folder / "dom.html") +
                                    "' 2>/dev/null </dev/null";
        EXPECT_EQ(std::system(command.c_str()), 0);
        const std::string dom = ReadBytes(folder / "dom.html");
        const std::size_t start = dom.find("SEEN") + 4;
        return json::parse(dom.substr(start, dom.rfind("SEEN") - start));
    }

    TempFolder folder;
    std::vector<FileOutcome> outcomes;
    std::vector<std::vector<ChannelPicture>> pictures;
};

TEST_F(ReportPageTest, ShowsWhatWasRepairedOnEveryScreen) {
    if (std::string(VELMO_CHROMIUM).empty()) GTEST_SKIP() << "there is no Chromium here";
    const json desk = Look(1200);
    EXPECT_THAT(
        desk["files"].get<std::vector<std::string>>(),
        ElementsAre(HasSubstr("<b>first & \"last\"</b>.wav → fixed.wav (3 channels, 8000 Hz, 32-bit float, 0:00.500)"),
                    HasSubstr("many.wav → fixed.wav (250 channels"), HasSubstr("clean.wav clean"),
                    HasSubstr("gone.wav failed: no such file")));
    ASSERT_THAT(desk["rows"], SizeIs(1 + 1 + 250));
    EXPECT_EQ(desk["rows"][0], json::parse(R"(["2", "990", "4", "6", "", "1000", "0:00.125", "1000"])"));
    EXPECT_EQ(desk["rows"][1], json::parse(R"(["2 other channels: clean"])"));
    EXPECT_EQ(desk["rows"][251], json::parse(R"(["250", "", "1", "", "", "3999", "0:00.500", "1"])"));
    EXPECT_THAT(desk["text"].get<std::string>(), HasSubstr("today; bad samples were replaced by 0.05"));
    EXPECT_FALSE(desk["isTooWide"]);
    EXPECT_FALSE(desk["isDark"]);
    EXPECT_TRUE(desk["links"]);
    EXPECT_EQ(desk["outside"], 0) << "the page needs something else";

    const json phone = Look(500, "--blink-settings=preferredColorScheme=0");
    EXPECT_FALSE(phone["isTooWide"]);
    EXPECT_TRUE(phone["isDark"]);
    EXPECT_THAT(phone["rows"], SizeIs(252));
    EXPECT_EQ(phone["names"][1], "\"NaN\"") << "the cells of a narrow table name themselves";
    EXPECT_EQ(desk["names"][1], "none");
}

TEST_F(ReportPageTest, DrawsTheWaveBeforeAndAfterAndClosesInOnTheFirstIncident) {
    if (std::string(VELMO_CHROMIUM).empty()) GTEST_SKIP() << "there is no Chromium here";
    const json seen = Look(1200);
    // 400 columns of 10 samples, two units wide each; the wave reaches from border to border.
    ASSERT_THAT(seen["whole"], SizeIs(2));
    EXPECT_EQ(seen["whole"][0]["label"], "Waveform before the repair, whole file");
    EXPECT_EQ(seen["whole"][0]["marks"], json::parse(R"(["bad", 200, 200])"));
    EXPECT_EQ(seen["whole"][1]["marks"], json::parse(R"(["repaired", 200, 200])"));
    EXPECT_EQ(seen["whole"][0]["columns"], 800);
    for (const json& picture : seen["whole"]) {
        EXPECT_EQ(picture["wave"], json::parse("[0, 0, 800, 200]"));
        EXPECT_GT(picture["pixels"], 1000);
    }
    // 120 samples, a column each, of which the first 30 are good: samples 970 to 1089.
    ASSERT_THAT(seen["samples"], SizeIs(2));
    EXPECT_EQ(seen["samples"][0]["label"], "Waveform before the repair, samples 970 to 1089");
    EXPECT_EQ(seen["samples"][0]["marks"], json::parse(R"(["bad", 60, 180])"));
    EXPECT_EQ(seen["samples"][0]["wave"], json::parse("[0, 0, 60, 200]"));
    EXPECT_EQ(seen["samples"][1]["wave"], json::parse("[0, 0, 240, 200]"));
}

TEST_F(ReportPageTest, TellsWhenNotEveryChannelHasAPicture) {
    pictures[1] = StartPictures(outcomes[1].scan, 100);
    const std::string page = FormatReport({"today", "0"}, outcomes, pictures);
    EXPECT_THAT(page, HasSubstr("Waveforms are shown for 101 of 251 damaged channels."));
    EXPECT_THAT(page, Not(HasSubstr("#f2c101")));
    pictures[1] = StartPictures(outcomes[1].scan, 250);
    EXPECT_THAT(FormatReport({"today", "0"}, outcomes, pictures), Not(HasSubstr("Waveforms are shown for")));
}

}  // namespace
}  // namespace velmohost
