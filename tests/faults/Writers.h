#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "CommandRun.h"
#include "FloatFiles.h"
#include "VelmoHost.h"
#include "files/VelmoDspFile.h"
#include "files/VelmoDspFileWriter.h"
#include "sound/TextFile.h"
#include "support/CapturedWindow.h"
#include "support/FileBytes.h"
#include "support/MessageOf.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"

/// Everything in the project that writes a file: the library, the object and the commands of velmohost.
class Writers : public testing::Test {
protected:
    struct Writer {
        std::string name;  ///< of the file that it writes
        /// Writes the file, of which the folder is given, and tells how that went: "done", or what was said.
        std::function<std::string(const std::string& folder)> write;
        std::string failure;  ///< what is said of a file that cannot be written as a whole
        bool keepsBeginning;  ///< what fitted stays, for those who write block after block and are told when it is
                              ///< enough
    };

    Writers() {
        std::vector<float> samples(20001, 0.25f);
        samples[5] = std::numeric_limits<float>::quiet_NaN();
        source = FloatWav(samples, 1);
        WriteBytes(sources / "in.wav", source);
        samples.resize(500);
        WriteBytes(sources / "short.wav", FloatWav(samples, 1));  // shorter than the report of its repair
        box = velmohost::Box::Create(host, "tesk.fixnan~ @numchannels 2");
        buffer.Fill(0.5f);
    }

    static std::string Told(bool isDone) { return isDone ? "done" : "false"; }

    /// What a message to the object leads to in the Max window.
    std::string Say(const std::string& message) {
        velmotest::CapturedWindow window;
        box->Send(message);
        const std::vector<std::string> rows = window.Take();
        return rows.empty() ? "done" : rows.back();
    }

    std::string Command(std::vector<std::string> arguments) {
        const std::string printed = velmotest::RunCommand(std::move(arguments));
        return printed.starts_with("0") || printed.starts_with("3") ? "done" : printed;
    }

    std::vector<Writer> All() {
        using velmodsp::File;
        const std::string in = sources / "in.wav", externals = VELMO_EXTERNALS_DIR;
        const auto at = [](const std::string& folder, const char* name) { return folder + "/" + name; };
        const auto save = [this, at](const char* name, int bits) {
            return [this, at, name, bits](const std::string& folder) {
                return Told(buffer.SaveAsAudioFile(File(at(folder, name).c_str()), 44100, bits, false));
            };
        };
        return {
            {"bytes",
             [=, this](const std::string& folder) {
                 velmodsp::FileWriter writer(File(at(folder, "bytes").c_str()));
                 return Told(writer.Write(source.data(), source.size()));
             },
             "false", true},
            {"a.wav", save("a.wav", 32), "false", true},
            {"a.aiff", save("a.aiff", 8), "false", true},  // of odd length, so that a pad byte comes last
            {"a.mat",
             [=, this](const std::string& folder) {
                 return Told(buffer.SaveAsMatFile(File(at(folder, "a.mat").c_str()), "a"));
             },
             "false", false},
            {"state.json",
             [=, this](const std::string& folder) { return Say("exportdict \"" + at(folder, "state.json") + "\""); },
             "[error] tesk.fixnan~: couldnt write FILE", false},
            {"tesk.fixnan~.maxref.xml",
             [=, this](const std::string& folder) {
                 const ScopedVariable home("home", folder);
                 const std::string row = Say("generatexml");
                 return row.starts_with("[post]") ? "done" : row;
             },
             "[error] tesk.fixnan~: could not create FILE", false},
            {"out.wav",
             [=, this](const std::string& folder) {
                 return Command(
                     {"run", "tesk.fixnan~", "--path", externals, "--in", in, "--out", at(folder, "out.wav")});
             },
             "velmohost: cannot write FILE: ", false},
            {"fixed.wav",
             [=, this](const std::string& folder) {
                 return Command({"repair", in, "--path", externals, "-o", at(folder, "fixed.wav")});
             },
             "velmohost: cannot repair " + in + ": cannot write FILE: ", false},
            {"report.html",
             [=, this](const std::string& folder) {
                 const std::string outcome = Command({"repair", sources / "short.wav", "--path", externals, "-o",
                                                      sources / "fixed.wav", "--report", at(folder, "report.html")});
                 EXPECT_TRUE(std::filesystem::exists(sources / "fixed.wav")) << outcome;
                 std::filesystem::remove(sources / "fixed.wav");
                 return outcome;
             },
             "velmohost: cannot write FILE: is the folder writable, the disk full?\n", false},
            {"found.json",
             [=, this](const std::string& folder) {
                 return Command({"scan", in, "--json", at(folder, "found.json")});
             },
             "velmohost: cannot write FILE: is the folder writable, the disk full?\n", false},
        };
    }

    /// Has a writer write where it cannot, or not all. It must say so in its own words, leave nothing behind that looks
    /// like its file, nor anything else in the folder, and do no harm to the source. The object lives on.
    void ExpectFailure(const Writer& writer, const std::string& folder, const std::function<std::string()>& write) {
        SCOPED_TRACE(writer.name);
        const std::string file = folder + "/" + writer.name;
        std::string failure = writer.failure;
        if (const auto place = failure.find("FILE"); place != failure.npos) failure.replace(place, 4, file);
        EXPECT_THAT(write(), testing::HasSubstr(failure));
        EXPECT_TRUE(writer.keepsBeginning || !std::filesystem::exists(file));
        std::filesystem::remove(file);
        EXPECT_TRUE(ReadBytes(sources / "in.wav") == source);
        EXPECT_THAT(Say("version"), testing::HasSubstr("Version "));
    }

    velmohost::Host host{{VELMO_EXTERNALS_DIR}};
    TempFolder sources;
    std::string source;  // what is in "in.wav"
    velmodsp::AudioBuffer buffer{1, 20001, true};
    std::unique_ptr<velmohost::Box> box;
};
