// A living tesk.fixnan~ under a script of messages, dictionaries, presets and blocks of samples. A model of the repair
// foretells every sample and every report.
//
// The first line is the box's text behind the object's name. In each further line the first character tells:
//
//     >n1-0i        a block: its samples, frame by frame, one character each (see `SampleOf`)
//     !48000 16 3 1 audio restarts: samplerate, vector size, and bit masks of the inlets and outlets that are connected
//     =1 a 2.       the object's value is set as pattr sets it
//     #@mode a @x 1 a dictionary with these entries is sent; one without a value holds an empty dictionary
//     <             a preset is stored and recalled
//                   anything else is a message

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "ObjectFuzzing.h"
#include "core/AttributeRuns.h"
#include "ext_dictobj.h"

namespace {

using Atoms = std::vector<t_atom>;

struct State {
    std::string mode;
    long numChannels;
    float replaceBy;
};

double SampleOf(char c) {
    switch (c) {
        case 'n':
            return std::numeric_limits<double>::quiet_NaN();
        case 's':
            return std::numeric_limits<double>::signaling_NaN();
        case 'i':
            return std::numeric_limits<double>::infinity();
        case 'j':
            return -std::numeric_limits<double>::infinity();
        case 'h':
            return 1e300;  // beyond 32 bits
        case 'm':
            return static_cast<double>(std::numeric_limits<float>::max());
        case 'd':
            return -1e-40;  // subnormal in 32 bits
        case 'e':
            return 5e-324;
        case 'z':
            return -0.0;
        default:
            return (static_cast<unsigned char>(c) - 48) / 7.0;
    }
}

/// What one channel of the object must do.
class ChannelModel {
public:
    void Rearm() { isArmed = true; }

    /// @param hasReported becomes true when the sample leads to a report
    float Repair(double sample, const State& state, bool& hasReported) {
        const bool givesValue = state.mode == "givenvalue";
        const auto narrowed = static_cast<float>(sample);
        if (std::isfinite(narrowed)) {
            if (!givesValue) lastValue = narrowed;
            return narrowed;
        }
        hasReported = hasReported || isArmed;
        isArmed = false;
        return givesValue ? state.replaceBy : lastValue;
    }

private:
    float lastValue = 0.0f;
    bool isArmed = true;
};

/// Flushed to zero or not, whichever the processor's settings make of a subnormal number.
bool IsSameSample(double sample, float expected) {
    const auto wide = static_cast<double>(expected);
    if (std::isnan(expected)) return std::isnan(sample);
    const bool isSubnormal = std::abs(expected) < std::numeric_limits<float>::min();
    return sample == wide || (isSubnormal && sample == 0.0);
}

class Session {
public:
    explicit Session(std::unique_ptr<velmohost::Box> created) : box(std::move(created)) {
        Require(box->NumSignalInlets() == box->NumSignalOutlets() && box->NumSignalInlets() >= 1 &&
                    box->NumSignalInlets() <= 250,
                "1 to 250 channels, as many out as in");
        channels.resize(box->NumSignalInlets());
        CheckState();
        Restart("");
    }

    void Do(const std::string& line) {
        TheHost().TakeRows();
        const std::string rest = line.substr(std::min<std::size_t>(1, line.size()));
        switch (line.empty() ? '\0' : line[0]) {
            case '>':
                return Perform(rest);
            case '!':
                return Restart(rest);
            case '=':
                box->SetValueOf(velmohost::ParseAtoms(rest));
                break;
            case '#':
                SendDictionary(rest);
                break;
            case '<':
                StoreAndRecall();
                break;
            default:
                Send(line);
        }
        CheckState();
    }

private:
    void CheckState() {
        const std::optional<Atoms> value = box->GetValueOf();
        Require(value && value->size() == 3, "the state is mode, numchannels and replaceby");
        const Atoms& atoms = *value;
        Require(atoms[0].a_type == A_SYM && atoms[1].a_type == A_LONG && atoms[2].a_type == A_FLOAT,
                "the state's types stay what they are");
        state = {atom_getsym(&atoms[0])->s_name, static_cast<long>(atom_getlong(&atoms[1])),
                 static_cast<float>(atom_getfloat(&atoms[2]))};
        Require(state.numChannels == static_cast<long>(channels.size()), "the number of channels never changes");
        Require(!std::isnan(state.replaceBy), "no message makes a NaN of the replacement value");
    }

    void Send(const std::string& line) {
        const std::string message = WithinWorkplace(line);
        const bool isUnderstood = box->Send(message);
        const bool isEmpty = !velmohost::ParseMessageText(message);
        Require(isUnderstood || isEmpty || !TheHost().TakeRows().empty(), "the reason why a message is not understood");
        if (message != line) CheckExport();
        const bool isClear = !isEmpty && velmohost::ParseMessageText(message)->selector == gensym("clear");
        if (isClear && isUnderstood) std::for_each(channels.begin(), channels.end(), [](auto& c) { c.Rearm(); });
    }

    /// The state file is JSON, whatever its texts are.
    void CheckExport() {
        std::string mode;
        try {
            mode = nlohmann::json::parse(nlohmann::json(state.mode).dump()).get<std::string>();
        } catch (const nlohmann::json::exception&) {
            return;  // the text is no UTF-8, which JSON cannot hold
        }
        const auto read = nlohmann::json::parse(ReadFile(ExportPath()), nullptr, false);
        Require(read.is_object() && read["mode"] == mode && read["numchannels"] == state.numChannels,
                "the exported state is JSON of the state");
    }

    void SendDictionary(const std::string& entries) {
        t_symbol* name = gensym("fuzzed");
        t_dictionary* const dictionary = dictobj_register(dictionary_new(), &name);
        Atoms atoms = velmohost::ParseAtoms(entries);
        for (const velmohost::AttributeRun& run : velmohost::FindRuns(static_cast<long>(atoms.size()), atoms.data())) {
            if (run.count > 0) {
                dictionary_appendatoms(dictionary, run.name, run.count, run.values);
            } else {
                dictionary_appenddictionary(dictionary, run.name, reinterpret_cast<t_object*>(dictionary_new()));
            }
        }
        Require(box->Send("dictionary fuzzed"), "a dictionary is understood");
        object_free(dictionary);
    }

    void StoreAndRecall() {
        const State before = state;
        const std::optional<velmohost::Preset> preset = box->StorePreset();
        Require(preset && preset->size() == 1, "a preset is one line");
        Require(box->RecallPreset(*preset), "a preset that was stored is understood");
        CheckState();
        Require(state.mode == FromPreset(before.mode) && state.replaceBy == before.replaceBy,
                "a preset brings the state back");
    }

    /// What the host's presets make of a text: #1 to #9 stand for the arguments $1 to $9 there.
    static std::string FromPreset(const std::string& text) {
        const bool isArgument = text.size() == 2 && text[0] == '#' && text[1] >= '1' && text[1] <= '9';
        return isArgument ? "$" + text.substr(1) : text;
    }

    static bool IsSet(t_atom_long mask, unsigned bit) { return (mask >> (bit % 63) & 1) != 0; }

    void Restart(const std::string& settings) {
        const Atoms atoms = velmohost::ParseAtoms(settings);
        const auto number = [&](std::size_t i, t_atom_long fallback) {
            return i < atoms.size() ? atom_getlong(&atoms[i]) : fallback;
        };
        const auto samplerate = static_cast<double>(std::clamp<t_atom_long>(number(0, 44100), 1, 1 << 30));
        const auto maxVectorSize = static_cast<t_atom_long>(kMaxSamples / channels.size());
        vectorSize = static_cast<long>(std::clamp<t_atom_long>(number(1, 4), 1, maxVectorSize));
        inlets.resize(channels.size());
        outlets.resize(channels.size());
        for (unsigned k = 0; k < channels.size(); ++k) {
            inlets[k] = IsSet(number(2, -1), k);
            outlets[k] = IsSet(number(3, -1), k);
        }
        chain.Start(*box, samplerate, vectorSize, inlets, outlets);
    }

    void Perform(const std::string& samples) {
        const std::size_t numChannels = channels.size();
        const auto sampleAt = [&](std::size_t frame, std::size_t k) {
            return samples.empty() ? 0.0 : SampleOf(samples[(frame * numChannels + k) % samples.size()]);
        };
        for (unsigned k = 0; k < numChannels; ++k) {
            double* const inlet = chain.InletSamples(k);
            Require((inlet != nullptr) == inlets[k], "connected inlets take samples");
            for (long i = 0; inlet != nullptr && i < vectorSize; ++i)
                inlet[i] = sampleAt(static_cast<std::size_t>(i), k);
        }
        chain.ProcessVectors(1);
        if (std::find(outlets.begin(), outlets.end(), true) == outlets.end()) return;  // nothing is processed

        std::vector<std::string> reports;
        for (unsigned k = 0; k < numChannels; ++k) {
            bool hasReported = false;
            const double* const outlet = chain.OutletSamples(k);
            for (long i = 0; i < vectorSize; ++i) {
                const double in = sampleAt(static_cast<std::size_t>(i), k);
                const float expected = inlets[k] ? channels[k].Repair(in, state, hasReported) : 0.0f;
                Require(IsSameSample(outlet[i], expected), "good samples pass and bad ones are replaced");
                Require(std::isfinite(outlet[i]) || std::isinf(state.replaceBy), "what comes out is finite");
            }
            if (hasReported) {
                reports.push_back("[error] tesk.fixnan~: NaN occured in Channel #" + std::to_string(k + 1));
            }
        }
        Require(TheHost().TakeRows() == reports, "a channel reports its first bad sample, once");
    }

    static constexpr std::size_t kMaxSamples = velmohost::kMaxVectorSize;  // of all channels of a block

    std::unique_ptr<velmohost::Box> box;
    velmohost::DspChain chain;
    std::vector<ChannelModel> channels;
    std::vector<bool> inlets, outlets;
    long vectorSize = 0;
    State state;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::vector<std::string> lines = TakeLines(input);
    std::unique_ptr<velmohost::Box> box = TheHost().Create("tesk.fixnan~ " + (lines.empty() ? "" : lines[0]));
    if (box == nullptr) {
        Require(!TheHost().TakeRows().empty(), "a reason why there is no object");
        return 0;
    }
    Session session(std::move(box));
    constexpr std::size_t kMaxLines = 64;
    for (std::size_t i = 1; i < std::min(lines.size(), kMaxLines); ++i) session.Do(lines[i]);
    TheHost().TakeRows();
    return 0;
}
