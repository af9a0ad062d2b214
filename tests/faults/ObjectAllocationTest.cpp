// Memory that runs out at every place where the object, or the host for it, asks for some.

#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>

#include "EachAllocation.h"
#include "core/AtomText.h"
#include "core/Owned.h"
#include "ext_dictobj.h"
#include "ext_obex.h"
#include "external/PluginFixture.h"
#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace {

using velmohost::Box;
using velmohost::DspChain;
using velmotest::FailEachAllocation;
using velmotest::FailingAllocations;

/// The text of a dictionary's entries, in their order.
std::string TextOf(t_dictionary* dict) {
    long count = 0;
    t_symbol** keys = nullptr;
    dictionary_getkeys_ordered(dict, &count, &keys);
    const velmohost::OwnedMemory<t_symbol*> owner(keys);
    std::string text;
    for (long i = 0; i < count; ++i) {
        long ac = 0;
        t_atom* av = nullptr;
        dictionary_getatoms(dict, keys[i], &ac, &av);
        text += std::string(keys[i]->s_name) + " " + velmohost::AtomsToText(ac, av) + "; ";
    }
    return text;
}

bool IsTold(const Rows& rows) {
    return std::any_of(rows.begin(), rows.end(), [](const std::string& row) { return !row.starts_with("[post]"); });
}

class MemoryRunsOut : public PluginFixture {
protected:
    /// Does something to the stage's object; false when it was refused.
    using Operation = std::function<bool()>;

    MemoryRunsOut() {
        velmohost::SetOutletListener([this](t_object*, t_outlet*, unsigned, t_symbol*, long, const t_atom* av) {
            t_dictionary* const dict = dictobj_findregistered_retain(atom_getsym(av));
            if (dict == nullptr) return;
            sentDictionary = dict;
            sent = TextOf(dict);
        });
        t_dictionary* settings = dictionary_new();
        for (const char* entry : {"mode lastvalue", "replaceby 0.25"}) {
            const std::vector<t_atom> atoms = velmohost::ParseAtoms(entry);
            dictionary_appendatom(settings, atom_getsym(&atoms[0]), const_cast<t_atom*>(&atoms[1]));
        }
        t_symbol* name = gensym("settings");
        registered = dictobj_register(settings, &name);
    }
    ~MemoryRunsOut() override {
        object_free(registered);
        velmohost::SetOutletListener({});
    }

    /// What there was to see of an operation: the object's state, what it sent, the files that it left, the rows.
    struct Result {
        bool isDone = false;
        std::string state, sent, files;
        Rows rows;

        bool operator==(const Result&) const = default;
    };

    Result Do(const Operation& operation, FailingAllocations& failing) {
        Result result;
        bool isThrown = false;
        try {
            result.isDone = operation();
        } catch (const std::bad_alloc&) {  // the host's own interface tells it so to the program that embeds it
            isThrown = true;
        }
        failing.Stop();
        result.rows = window.Take();
        if (isThrown) result.rows.push_back("[error] thrown: out of memory");
        if (box) result.state = velmohost::AtomsToText(3, box->GetValueOf()->data());
        result.sent = std::exchange(sent, {});
        result.files = ReadText(folder / "state.json") + ReadText(folder / "tesk.fixnan~.maxref.xml");
        return result;
    }

    void Prepare() {
        for (const char* file : {"state.json", "tesk.fixnan~.maxref.xml"}) std::filesystem::remove(folder / file);
        chain = std::make_unique<DspChain>();
        box = Create("@numchannels 2 @mode givenvalue @replaceby 0.5");
        window.Take();
    }

    void CleanUp() {
        chain.reset();
        box.reset();
        if (t_dictionary* const dict = std::exchange(sentDictionary, nullptr)) {
            dictobj_release(dict);
            object_free(dict);
        }
        window.Take();
    }

    /// A new object repairs a block, and nothing is left to be told.
    void ExpectThatTheHostWorks() {
        const auto other = Create("@numchannels 2 @mode givenvalue @replaceby 0.75");
        ASSERT_TRUE(other);
        DspChain otherChain;
        otherChain.Start(*other, 48000.0, 16, {true, true}, {true, true});
        std::fill_n(otherChain.InletSamples(1), 16, std::numeric_limits<double>::quiet_NaN());
        otherChain.ProcessVectors(1);
        EXPECT_EQ(otherChain.OutletSamples(1)[15], 0.75);
        EXPECT_EQ(window.Take(), Rows{"[error] tesk.fixnan~: NaN occured in Channel #2"});
    }

    /// Has each of the operation's allocations fail. After each the host works as before.
    void FailEach(const char* name, const Operation& operation) {
        Prepare();
        FailingAllocations none(std::numeric_limits<unsigned long>::max(), FailingAllocations::Once);
        const Result good = Do(operation, none);
        CleanUp();
        EXPECT_TRUE(good.isDone) << name;
        FailEachAllocation(name, [&](unsigned long n, FailingAllocations::Extent extent) {
            Prepare();
            FailingAllocations failing(n, extent);
            const Result result = Do(operation, failing);
            const velmotest::Attempted attempted{failing.NumFailed() > 0, IsTold(result.rows)};
            EXPECT_TRUE(attempted.isTold || result == good) << result.state << result.sent << result.files;
            EXPECT_TRUE(result.files.empty() || result.files.ends_with("}\n") ||
                        result.files.ends_with("\n</c74object>\n\n"))
                << "half a file: " << result.files;
            CleanUp();
            ExpectThatTheHostWorks();
            return attempted;
        });
    }

    Operation Sending(const std::string& message) {
        return [this, message] { return box->Send(message); };
    }

    TempFolder folder;
    ScopedVariable home{"home", folder.Path().string()};
    std::unique_ptr<Box> box;
    std::unique_ptr<DspChain> chain;
    std::string sent;  // the dictionary that left the dump outlet
    t_dictionary* sentDictionary = nullptr;
    t_dictionary* registered;
};

TEST_F(MemoryRunsOut, WhileObjectsAreMadeAndFreed) {
    for (const char* arguments : {"@numchannels 1", "@numchannels 8 @mode givenvalue @replaceby -0.5"}) {
        FailEach(arguments, [this, arguments] {
            box = Create(arguments);
            return box != nullptr;
        });
    }
    FailEach("free", [this] {
        box.reset();
        return true;
    });
}

TEST_F(MemoryRunsOut, WhileMessagesAreTaken) {
    for (const char* message : {"mode lastvalue", "replaceby 1", "numchannels 2", "getmode", "clear", "version",
                                "postattributes", "postattributes mode", "postdspstatus", "postdspstate", "dumpdict",
                                "dumpdict mode replaceby", "dictionary settings", "generatexml"}) {
        FailEach(message, Sending(message));
    }
    FailEach("exportdict", Sending("exportdict \"" + folder / "state.json" + "\""));
}

TEST_F(MemoryRunsOut, WhilePresetsAreStoredAndRecalled) {
    Prepare();
    const velmohost::Preset preset = box->StorePreset().value();
    std::vector<t_atom> values = box->GetValueOf().value();
    FailEach("store preset", [this] { return box->StorePreset().value_or(velmohost::Preset()).size() == 1; });
    FailEach("recall preset", [&] { return box->RecallPreset(preset); });
    FailEach("getvalueof", [&] { return box->GetValueOf().value_or(std::vector<t_atom>()).size() == 3; });
    atom_setfloat(&values.back(), 0.125);
    FailEach("setvalueof", [&] { return box->SetValueOf(values); });
}

TEST_F(MemoryRunsOut, WhileAudioStarts) {
    for (const long vectorSize : {16, 4096}) {
        FailEach("dsp64", [this, vectorSize] {
            chain->Start(*box, 44100.0, vectorSize, {true, true}, {true, true});
            return true;
        });
    }
    FailEach("assist", [this] { return box->InletAssist(0) == "input #1" && box->OutletAssist(2) == "dumpout"; });
}

}  // namespace
