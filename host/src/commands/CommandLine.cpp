#include "commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

#include "audio/DspSettings.h"
#include "commands/InfoCommand.h"
#include "commands/Notice.h"
#include "commands/RepairCommand.h"
#include "commands/ReplCommand.h"
#include "commands/RunCommand.h"
#include "commands/ScanCommand.h"
#include "commands/UsageError.h"

namespace velmohost {
namespace {

constexpr int kFailed = 1, kWrongUsage = 2;

/// A number of seconds or Hz: finite, and not below `minimum` (or equal to it, when `aboveMinimum`).
CLI::Validator Finite(double minimum, bool aboveMinimum) {
    return CLI::Validator(
        [minimum, aboveMinimum](const std::string& text) -> std::string {
            double value = 0.0;
            if (!CLI::detail::lexical_cast(text, value)) return "not a number: " + text;
            if (!std::isfinite(value) || value < minimum || (aboveMinimum && value == minimum)) {
                return "out of range: " + text;
            }
            return "";
        },
        "", "");
}

/// A number that a 32-bit sample can hold.
CLI::Validator FiniteSample() {
    return CLI::Validator(
        [](const std::string& text) -> std::string {
            double value = 0.0;
            if (!CLI::detail::lexical_cast(text, value)) return "not a number: " + text;
            return std::isfinite(static_cast<float>(value)) ? "" : "out of range: " + text;
        },
        "", "");
}

void AddPathOption(CLI::App& command, std::vector<std::string>& paths) {
    command.add_option("--path", paths, "folder searched for plug-ins before the package's externals; may be repeated")
        ->type_name("DIR")
        ->allow_extra_args(false);
}

void AddBoxText(CLI::App& command, std::string& boxText) {
    command.add_option("BOX", boxText, "what is typed into the object box: class name, arguments, @attribute values")
        ->type_name("TEXT")
        ->required();
}

void AddSoundOptions(CLI::App& run, RunOptions& options) {
    auto* const in = run.add_option("--in", options.in, "sound file for the signal inlets, channel k to inlet k");
    in->type_name("FILE");
    run.add_option("--out", options.out, "sound file for the signal outlets, .wav or .aiff")->type_name("FILE");
    run.add_option("--bits", options.bits, "bits of a sample in --out: 8, 16, 24 or 32")
        ->type_name("N")
        ->check(CLI::IsMember({8, 16, 24, 32}))
        ->capture_default_str();
    run.add_option("--seconds", options.seconds, "length without --in")
        ->type_name("S")
        ->check(Finite(0.0, false))
        ->excludes(in)
        ->capture_default_str();
    run.add_option("--samplerate", options.samplerate, "sample rate without --in")
        ->type_name("HZ")
        ->check(Finite(0.0, true))
        ->excludes(in)
        ->capture_default_str();
    run.add_option("--block", options.block, "samples of a signal vector")
        ->type_name("N")
        ->check(CLI::Range(1l, kMaxVectorSize))
        ->capture_default_str();
    run.add_option("--inlets", options.inlets,
                   "connected signal inlets, e.g. 1,3-4 or none; default: those with a channel")
        ->type_name("LIST");
    run.add_option("--outlets", options.outlets, "connected signal outlets; default: all")->type_name("LIST");
}

void AddMessageOptions(CLI::App& run, RunOptions& options) {
    run.add_option("--message", options.messages, "message sent before audio starts; may be repeated")
        ->type_name("TEXT")
        ->allow_extra_args(false);
    run.add_option("--at", options.atTimes,
                   "message sent at the first block boundary from that time on; may be repeated")
        ->type_name("SECONDS TEXT")
        ->allow_extra_args(false);
}

void AddCommonOptions(CLI::App& command, RunOptions& options) {
    AddPathOption(command, options.paths);
    command.add_option("--save-as", options.saveAs, "answer to the save-as dialog; without it the dialog is cancelled")
        ->type_name("PATH");
    command.add_flag("--quiet", options.quiet, "no progress display (it is shown on a terminal only)");
}

/// A command that brings an object to life: `run` and `repl` take the same options.
CLI::App& AddObjectCommand(CLI::App& app, const char* name, const char* description, RunOptions& options) {
    CLI::App& command = *app.add_subcommand(name, description);
    AddBoxText(command, options.boxText);
    AddSoundOptions(command, options);
    AddMessageOptions(command, options);
    AddCommonOptions(command, options);
    return command;
}

CLI::App& AddInfo(CLI::App& app, InfoOptions& options) {
    CLI::App& info = *app.add_subcommand("info", "tell what the object is: inlets, outlets, attributes, messages");
    AddBoxText(info, options.boxText);
    AddPathOption(info, options.paths);
    info.add_flag("--json", options.asJson, "for machines: a JSON object");
    return info;
}

void AddBatchOptions(CLI::App& command, BatchOptions& options) {
    command.add_option("FILE", options.files, "sound files; folders with --recursive")->type_name("FILE")->required();
    command.add_flag("--recursive", options.recursive, "walk folders for WAV, AIFF and CAF files");
    command.add_option("--jobs", options.jobs, "files worked on at the same time; default: one per processor")
        ->type_name("N")
        ->check(CLI::Range(1u, 1024u));
    command.add_option("--json", options.json, "file to write what was found to, for machines")->type_name("FILE");
    command.add_flag("--quiet", options.quiet, "no progress display (it is shown on a terminal only)");
}

CLI::App& AddScan(CLI::App& app, BatchOptions& options) {
    CLI::App& scan = *app.add_subcommand("scan", "find NaN and infinite samples in sound files; changes nothing");
    AddBatchOptions(scan, options);
    scan.footer("Exit status: 0 all clean, 3 bad samples found, 1 a file could not be read, 2 wrong usage.\n");
    return scan;
}

CLI::App& AddRepair(CLI::App& app, RepairOptions& options) {
    CLI::App& repair = *app.add_subcommand("repair", "repair sound files with tesk.fixnan~");
    AddBatchOptions(repair, options);
    repair
        .add_option("-o,--output", options.output,
                    "file, or folder for several; default: NAME-repaired.EXT beside each file")
        ->type_name("FILE|DIR");
    auto* const mode = repair.add_option("--mode", options.mode.mode, "what a bad sample becomes");
    mode->type_name("lastvalue|givenvalue")->check(CLI::IsMember({"lastvalue", "givenvalue"}))->capture_default_str();
    const auto* const replaceBy =
        repair.add_option("--replaceby", options.mode.replaceBy, "value for bad samples, with --mode givenvalue")
            ->type_name("X")
            ->check(FiniteSample())
            ->capture_default_str();
    repair.final_callback([&options, replaceBy] {
        if (replaceBy->count() == 0 || options.mode.mode == "givenvalue") return;
        throw UsageError("--replaceby needs --mode givenvalue");
    });
    repair.add_option("--report", options.report, "HTML page to write, with the waveforms before and after")
        ->type_name("FILE");
    repair.add_flag("--overwrite", options.overwrite, "replace existing files; they go to the trash");
    AddPathOption(repair, options.paths);
    repair.footer(
        "Exit status: 0 every file clean or repaired, 1 a file failed (the others are done), 2 wrong usage.\n");
    return repair;
}

void CheckMessage(const std::string& option, const std::string& text) {
    if (text.find_first_not_of(" \t\n") == std::string::npos) throw UsageError(option + ": the message is empty");
}

/// What the options' own checks cannot see: parts of --at, and texts of blanks alone.
void CheckMessages(const RunOptions& options) {
    for (const std::string& text : options.messages) CheckMessage("--message", text);
    for (const auto& [seconds, text] : options.atTimes) {
        if (!std::isfinite(seconds) || seconds < 0.0) throw UsageError("--at: the time is to be 0 seconds or more");
        CheckMessage("--at", text);
    }
}

/// A write past a limit or into a closed pipe is to fail as an error that can be told, not to end the program.
void KeepWriteErrorsFromEndingTheProgram() {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

std::string DescribeMissingCommand(int argc, char** argv) {
    const std::string known = "; there are run, scan, repair, repl and info";
    return argc > 1 ? std::string("no such command: ") + argv[1] + known : "a command is missing" + known;
}

int TellWrongUsage(const std::string& reason, const CLI::App* command) {
    PrintNotice(reason);
    PrintNotice("see velmohost" + std::string(command != nullptr ? " " + command->get_name() : "") + " --help");
    return kWrongUsage;
}

/// What a command printed may not have gone out, as when a full disk takes the output.
int CheckOutput(int status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    PrintNotice("cannot write to the standard output");
    return kFailed;
}

int RunCommand(int argc, char** argv) {
    CLI::App app("velmohost: runs a Max object without Max", "velmohost");
    app.require_subcommand(1);
    RunOptions runOptions;
    BatchOptions scanOptions;
    RepairOptions repairOptions;
    InfoOptions infoOptions;
    const CLI::App& run =
        AddObjectCommand(app, "run", "create the object, send it messages, stream sound through it", runOptions);
    const CLI::App& scan = AddScan(app, scanOptions);
    const CLI::App& repair = AddRepair(app, repairOptions);
    const CLI::App& info = AddInfo(app, infoOptions);
    AddObjectCommand(app, "repl", "type messages to a living object; ? tells what it understands", runOptions);
    const auto chosen = [&app]() -> const CLI::App* {
        return app.get_subcommands().empty() ? nullptr : app.get_subcommands().front();
    };
    try {
        app.parse(argc, argv);
        if (info.parsed()) return ShowInfo(infoOptions);
        if (scan.parsed()) return ScanFiles(scanOptions);
        if (repair.parsed()) return RepairFiles(repairOptions);
        CheckMessages(runOptions);
        return run.parsed() ? RunObject(runOptions) : RunRepl(runOptions);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::RequiredError& error) {
        return TellWrongUsage(chosen() != nullptr ? error.what() : DescribeMissingCommand(argc, argv), chosen());
    } catch (const CLI::ParseError& error) {
        return TellWrongUsage(error.what(), chosen());
    } catch (const UsageError& error) {
        return TellWrongUsage(error.what(), chosen());
    } catch (const std::exception& error) {
        PrintNotice(error.what());
        return kFailed;
    }
}

}  // namespace

int RunCommandLine(int argc, char** argv) {
    KeepWriteErrorsFromEndingTheProgram();
    std::clearerr(stdout);
    try {
        return CheckOutput(RunCommand(argc, argv));
    } catch (const std::bad_alloc&) {  // before there were options, or while an error was to be told
        PrintNotice("out of memory");
        return kFailed;
    }
}

}  // namespace velmohost
