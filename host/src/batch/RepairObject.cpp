#include "batch/RepairObject.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <vector>

#include "commands/Notice.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

constexpr const char* kClassName = "tesk.fixnan~";

/// The shortest text that reads as the same number, with the mark of a float.
std::string NumberText(double value) {
    std::array<char, 32> text{};
    const std::to_chars_result end = std::to_chars(text.data(), text.data() + text.size(), value);
    const std::string digits(text.data(), end.ptr);
    return digits.find_first_of(".e") == std::string::npos ? digits + "." : digits;
}

std::string BoxText(const RepairMode& mode, unsigned numChannels) {
    return std::string(kClassName) + " @numchannels " + std::to_string(numChannels) + " @mode " + mode.mode +
           " @replaceby " + NumberText(mode.replaceBy);
}

}  // namespace

RepairHost::RepairHost(const std::vector<std::string>& pluginFolders) : host(pluginFolders) {
    SetMaxWindowSink([this](RowKind, const std::string&, const std::string& text) { lastRow = text; });
}

RepairHost::~RepairHost() {
    DrainMaxWindow();
    SetMaxWindowSink({});
}

std::unique_ptr<Box> RepairHost::CreateBox(const RepairMode& mode, unsigned numChannels) {
    std::unique_ptr<Box> box = Box::Create(host, BoxText(mode, numChannels));
    if (!box) throw std::runtime_error(std::string(kClassName) + ": " + lastRow);
    if (box->NumSignalInlets() != numChannels) {
        throw std::runtime_error(std::string(kClassName) + " takes " + Count(box->NumSignalInlets(), "channel") +
                                 " at most");
    }
    return box;
}

RepairObject::RepairObject(RepairHost& host, const RepairMode& mode, unsigned numChannels, double samplerate,
                           unsigned long maxFrames)
    : box(host.CreateBox(mode, numChannels)) {
    const std::vector<bool> all(numChannels, true);
    chain.Start(*box, samplerate, static_cast<long>(kVectorSize), all, all, maxFrames / kVectorSize);
}

void RepairObject::Process(unsigned long numFrames) noexcept {
    chain.ProcessVectors((numFrames + kVectorSize - 1) / kVectorSize);
}

}  // namespace velmohost
