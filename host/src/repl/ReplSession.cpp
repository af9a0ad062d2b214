#include "repl/ReplSession.h"

#include <algorithm>
#include <cstdio>
#include <exception>

#include "box/Box.h"
#include "box/BoxText.h"
#include "commands/InfoText.h"
#include "commands/Notice.h"
#include "commands/UsageError.h"
#include "core/AtomText.h"
#include "ext_obex.h"
#include "repl/Completion.h"
#include "sound/SoundError.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

constexpr std::chrono::milliseconds kAudioInterval{10}, kIdleInterval{500};

std::string TextOf(const std::vector<t_atom>& atoms) {
    return AtomsToText(static_cast<long>(atoms.size()), atoms.data());
}

bool IsWord(const std::vector<t_atom>& arguments, std::size_t index, const char* word) {
    return index < arguments.size() && arguments[index].a_type == A_SYM &&
           atom_getsym(&arguments[index]) == gensym(word);
}

bool IsNumber(const t_atom& atom) { return atom.a_type == A_LONG || atom.a_type == A_FLOAT; }

std::string DescribeHostWords() {
    return "\nVelmohost\n" + FormatEntry("?", "shows this.") +
           FormatEntry("dsp start", "turns audio on: sound flows through the object.") +
           FormatEntry("dsp stop", "turns audio off.") +
           FormatEntry("dsp wait", "float\nlets sound flow for so many seconds before the next line.") +
           FormatEntry("preset", "[int]\nstores the object's state as the preset of that number, 1 by default.") +
           FormatEntry("preset recall", "[int]\nrecalls it.") +
           FormatEntry("getvalueof", "asks for the object's value as pattr does.") +
           FormatEntry("setvalueof", "[any...]\nsets it.") +
           FormatEntry("dictionary last", "sends the object the dictionary that was dumped last.") +
           FormatEntry("control-D", "leaves, as the end of the input does.");
}

}  // namespace

ReplSession::ReplSession(const RunOptions& options, Box& replBox, Interruption& interruption, ReplClock clock)
    : box(replBox), description(Describe(replBox)), audio(options, replBox, interruption, clock) {}

template <class Action>
void ReplSession::Guard(Action action) noexcept {
    try {
        action();
        DrainMaxWindow();
    } catch (const SoundError& error) {
        soundFailed = true;
        PrintNotice(error.what());
    } catch (const std::exception& error) {
        PrintNotice(error.what());
    }
}

void ReplSession::Execute(const std::string& line) noexcept {
    Guard([&] {
        audio.CatchUp();
        Perform(line);
    });
}

int ReplSession::Finish() noexcept {
    Guard([&] {
        if (audio.IsRunning()) audio.Stop();
    });
    return soundFailed ? 1 : 0;
}

std::vector<std::string> ReplSession::Complete(const std::string& text) const {
    return CompleteLine(description, text);
}

std::chrono::milliseconds ReplSession::DoWhatIsDue() noexcept {
    Guard([&] { audio.CatchUp(); });
    return audio.IsRunning() ? kAudioInterval : kIdleInterval;
}

void ReplSession::Perform(const std::string& line) {
    const std::optional<MessageText> message = ParseMessageText(line);
    if (!message) return;
    const std::string selector = message->selector->s_name;
    const Arguments& arguments = message->arguments;
    if (selector == "?") return ShowHelp();
    if (selector == "dsp") return ControlDsp(arguments);
    if (selector == "preset" && TakesPreset(arguments)) return HandlePreset(arguments);
    if (selector == "getvalueof" && arguments.empty()) return ShowValue();
    if (selector == "setvalueof") return void(box.SetValueOf(arguments));
    box.Send(line);
}

void ReplSession::ShowHelp() const {
    std::fputs((FormatVocabulary(description) + DescribeHostWords()).c_str(), stdout);
    std::fflush(stdout);
}

void ReplSession::ControlDsp(const Arguments& arguments) {
    if (arguments.size() == 1 && IsWord(arguments, 0, "start")) return audio.Start();
    if (arguments.size() == 1 && IsWord(arguments, 0, "stop")) return audio.Stop();
    if (arguments.size() == 2 && IsWord(arguments, 0, "wait") && IsNumber(arguments[1])) {
        return audio.Wait(atom_getfloat(&arguments[1]));
    }
    throw UsageError("dsp takes start, stop or wait SECONDS");
}

bool ReplSession::TakesPreset(const Arguments& arguments) const {
    const std::size_t numWords = IsWord(arguments, 0, "recall") ? 1 : 0;
    if (arguments.size() == numWords) return true;
    return arguments.size() == numWords + 1 && arguments.back().a_type == A_LONG;
}

void ReplSession::HandlePreset(const Arguments& arguments) {
    const bool hasNumber = !arguments.empty() && arguments.back().a_type == A_LONG;
    const t_atom_long number = hasNumber ? atom_getlong(&arguments.back()) : 1;
    IsWord(arguments, 0, "recall") ? RecallPreset(number) : StorePreset(number);
}

void ReplSession::StorePreset(t_atom_long number) {
    std::optional<Preset> preset = box.StorePreset();
    if (!preset) return;
    if (preset->empty()) throw UsageError("the object has put nothing into preset " + std::to_string(number));
    for (const PresetLine& line : *preset) {
        PrintWindowLine("[preset] " + std::to_string(number) + ": " + FormatPresetLine(line));
    }
    presets[number] = std::move(*preset);
}

void ReplSession::RecallPreset(t_atom_long number) {
    const auto found = presets.find(number);
    if (found == presets.end()) throw UsageError("there is no preset " + std::to_string(number));
    box.RecallPreset(found->second);
}

void ReplSession::ShowValue() {
    const std::optional<std::vector<t_atom>> value = box.GetValueOf();
    if (value) PrintWindowLine("[pattr]" + (value->empty() ? "" : " " + TextOf(*value)));
}

}  // namespace velmohost
