#include "text/VelmoDspStringArray.h"
#include "utils/VelmoDspInfos.h"

#include "TeskCatalogue.h"

#include "rehearsal.h"
#include "tesk_fixnan.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>

using velmodsp::String;
using velmomax::AsMethod;
using velmomax::Guarded;

t_class* tesk_fixnan_class = nullptr;

namespace {

constexpr char className[] = "tesk.fixnan~";
constexpr long minNumChannels = 1;
constexpr long maxNumChannels = 250;

t_object* asObject(tesk_fixnan_t* x) { return reinterpret_cast<t_object*>(x); }

// ---- class

/// The day of compilation, "Apr 27 2015". The compiler pads a day of one digit with a blank, which is left out here.
std::string buildDate() {
    std::string date = __DATE__;
    if (date[4] == ' ') date.erase(4, 1);
    return date;
}

std::string versionText() {
    char text[64];
    std::snprintf(text, sizeof text, "%d.%d.%d (Build %s) (%d bits float)", VELMO_VERSION_MAJOR, VELMO_VERSION_MINOR,
                  VELMO_VERSION_PATCH, buildDate().c_str(), velmodsp::ApiInfos::GetFloatingPointPrecision());
    return text;
}

void addDocumentation(t_class* c) {
    using Catalogue = Tesk::MaxMspExternalDocumentation;
    const String digest = Catalogue::GetClassDigestAsString(String(className));
    const String description = Catalogue::GetClassDescriptionAsString(String(className));
    const String seeAlso = Catalogue::GetClassSeeAlsoAsString(String(className));
    velmomax::AddDocumentationAttribute(c, "classdigest", calcoffset(tesk_fixnan_t, ob.classdigest), digest.C_Str());
    velmomax::AddDocumentationAttribute(c, "classdescription", calcoffset(tesk_fixnan_t, ob.classdescription),
                                        description.C_Str());
    velmomax::AddDocumentationAttribute(c, "classseealso", calcoffset(tesk_fixnan_t, ob.classseealso), seeAlso.C_Str());
    velmomax::AddDocumentationAttribute(c, "externalversion", calcoffset(tesk_fixnan_t, ob.externalversion),
                                        versionText().c_str());
}

void addMethods(t_class* c) {
    velmomax::AddCommonMethods(c);
    velmomax::AddMspMethods(c);
    velmomax::AddDspChainMethod(c, AsMethod(tesk_fixnan_dsp));
    velmomax::AddPostDspInletsStatus(c, AsMethod(post_dsp_inlets_outlets_status));
    velmomax::AddAssistMethod(c, AsMethod(tesk_fixnan_assist));
    velmomax::AddMethodNoArgument(c, AsMethod(tesk_fixnan_clear), "clear");
    const String clearText = Tesk::MaxMspDocumentation::GetMethodDescriptionAsString(String("clear"));
    velmomax::class_doc_method(c, "clear", clearText.C_Str());
}

void addAttributes(t_class* c) {
    using velmomax::AddProperty;
    using velmomax::AddPropertyOfOwnType;
    using velmomax::AddTextProperty;
    const method setter = AsMethod(tesk_fixnan_set_attr);

    velmomax::AddAttribute(c, "numchannels", "long", setter, calcoffset(tesk_fixnan_t, numchannels));
    attr_addfilter_clip(class_attr_get(c, gensym("numchannels")), minNumChannels, maxNumChannels, 1, 1);
    AddPropertyOfOwnType(c, "numchannels", "maxvalue", velmomax::long2string(maxNumChannels).c_str());
    AddPropertyOfOwnType(c, "numchannels", "minvalue", velmomax::long2string(minNumChannels).c_str());
    AddPropertyOfOwnType(c, "numchannels", "default", velmomax::long2string(minNumChannels).c_str());
    AddProperty(c, "numchannels", "dontreset", "long", "1");
    AddTextProperty(c, "numchannels", "label", "number of channels");
    AddTextProperty(c, "numchannels", "description",
                    Tesk::MaxMspDocumentation::NumChannelsAttributeDescription.C_Str());

    velmomax::AddAttribute(c, "replaceby", "float32", setter, calcoffset(tesk_fixnan_t, replaceby));
    AddPropertyOfOwnType(c, "replaceby", "default", velmomax::float2string(0.0f).c_str());
    AddTextProperty(c, "replaceby", "label", "replacement value");

    velmomax::AddAttribute(c, "mode", "symbol", setter, calcoffset(tesk_fixnan_t, mode));
    AddPropertyOfOwnType(c, "mode", "default", "lastvalue");
    AddTextProperty(c, "mode", "label", "replacement mode");
    AddTextProperty(c, "mode", "description", "replacement mode");
    AddProperty(c, "mode", "style", "symbol", "enum");
    AddProperty(c, "mode", "enumvals", "atom", "lastvalue givenvalue");
}

void registerClass() {
    velmomax::InitCommonSymbols();
    t_class* c = class_new(className, AsMethod(tesk_fixnan_new), AsMethod(tesk_fixnan_free),
                           static_cast<long>(sizeof(tesk_fixnan_t)), nullptr, A_GIMME, 0);
    if (!c) throw std::bad_alloc();
    velmomax::AddClassFlagNewDictionary(c);
    addDocumentation(c);
    addMethods(c);
    addAttributes(c);
    class_dspinit(c);
    class_register(gensym("box"), c);
    tesk_fixnan_class = c;
}

// ---- object

void configure(tesk_fixnan_t* x, float samplerate, std::uint32_t maxBlockSize) {
    Guarded(x, [&] { x->engine->Configure(samplerate, maxBlockSize, true); });
}

void createEngine(tesk_fixnan_t* x) {
    x->numchannels = std::clamp(x->numchannels, minNumChannels, maxNumChannels);
    x->engine = new velmodsp::MultiFixNaN(static_cast<std::uint32_t>(x->numchannels));
    x->listener = new MultiFixNaNListener(x);
    x->engine->AddListener(x->listener);
}

bool create(tesk_fixnan_t* x, long argc, t_atom* argv) {
    x->ob.box = gensym("#B")->s_thing;
    x->engine = nullptr;
    // The engine is built for the channels that the arguments ask for, so these are read first.
    if (!velmomax::dictionary_process_partial(x, argc, argv, 1, "numchannels")) return false;
    createEngine(x);
    velmomax::AddDumpOutlet(x);
    configure(x, sys_getsr(), static_cast<std::uint32_t>(std::max(sys_getblksize(), 0)));
    velmomax::CreateDspInletsAndOutlets(&x->ob, x->engine->GetNumInputs(), x->engine->GetNumOutputs(), true);
    return velmomax::dictionary_process_all(x, argc, argv, true);
}

// ---- attributes

void setNumChannels(tesk_fixnan_t* x, const t_atom* value) {
    // The host clips the value as well, but not every host does so before a setter of one's own.
    const auto requested = std::clamp<t_atom_long>(atom_getlong(value), minNumChannels, maxNumChannels);
    if (!x->engine) {
        x->numchannels = static_cast<long>(requested);
    } else if (requested != x->numchannels) {
        object_error(asObject(x), "could not dynamically change number of channels");
    }
}

float numberIn(const t_atom* value) {
    switch (value->a_type) {
        case A_FLOAT:
            return static_cast<float>(atom_getfloat(value));
        case A_LONG:
            return static_cast<float>(atom_getlong(value));
        default:
            return 0.0f;
    }
}

void setReplacementValue(tesk_fixnan_t* x, const t_atom* value) {
    x->replaceby = numberIn(value);
    x->engine->SetReplacementValue(x->replaceby);
}

void setMode(tesk_fixnan_t* x, const t_atom* value) {
    t_symbol* mode = atom_getsym(value);
    const String text(mode->s_name);
    x->mode = mode;
    x->engine->SetMode(text);
}

}  // namespace

void MultiFixNaNListener::NaNOccured(const String& channelName) {
    if (owner) object_error(asObject(owner), "NaN occured in %s", channelName.C_Str());
}

void tesk_fixnan_setup() noexcept {
    if (!tesk_fixnan_class) Guarded(nullptr, registerClass);
}

tesk_fixnan_t* tesk_fixnan_new(t_symbol*, short argc, t_atom* argv) {
    auto* x = static_cast<tesk_fixnan_t*>(velmomax::ObjectAlloc(tesk_fixnan_class));
    if (!x) {
        object_error(nullptr, "couldnt allocate memory");
        return nullptr;
    }
    bool isCreated = false;
    if (!Guarded(x, [&] { isCreated = create(x, argc, argv); })) {
        object_error(asObject(x), "couldnt create object");
        object_free(x);
    }
    return isCreated ? x : nullptr;
}

void tesk_fixnan_free(tesk_fixnan_t* x) {
    if (!x) return;
    velmomax::RemoveFromDspChain(&x->ob);
    if (x->engine) Guarded(x, [&] { x->engine->RemoveListener(x->listener); });
    delete x->listener;
    x->listener = nullptr;
    delete x->engine;
    x->engine = nullptr;
}

void tesk_fixnan_assist(tesk_fixnan_t* x, void*, long io, long index, char* text) {
    Guarded(x, [&] {
        String description;
        if (io == ASSIST_INLET) {
            description = x->engine->GetInputDescription(static_cast<int>(index));
        } else if (io == ASSIST_OUTLET) {
            description = x->engine->GetOutputDescription(static_cast<int>(index));
        } else {
            return;
        }
        std::snprintf(text, ASSIST_MAX_STRING_LEN, "%s", description.C_Str());
    });
}

void tesk_fixnan_clear(tesk_fixnan_t* x) { x->engine->Reset(); }

void post_dsp_inlets_outlets_status(tesk_fixnan_t* x) {
    Guarded(x, [&] {
        velmodsp::StringArray lines;
        x->engine->PrintDspStatus(lines);
        for (unsigned long i = 0; i < lines.Size(); ++i) object_post(asObject(x), "%s", lines[i].C_Str());
    });
}

void tesk_fixnan_dsp(tesk_fixnan_t* x, t_object* dsp64, short* count, double samplerate, long maxvectorsize, long) {
    configure(x, static_cast<float>(samplerate), static_cast<std::uint32_t>(std::max(maxvectorsize, 0L)));
    Guarded(x, [&] { x->engine->SetInletsAndOutletsStatus(count); });
    Guarded(x, tesk_fixnan_rehearse);
    object_method(dsp64, velmomax::CommonSymbol(velmomax::SlotOf("dsp_add64")), x, tesk_fixnan_perform, 0, nullptr);
}

void tesk_fixnan_perform(tesk_fixnan_t* x, t_object*, double** ins, long, double** outs, long, long sampleframes, long,
                         void*) {
    if (!x->engine) return;
    Guarded(x, [&] {
        x->engine->Perform(outs, const_cast<const double**>(ins), static_cast<unsigned long>(sampleframes),
                           x->ob.mute.Load(), x->ob.bypass.Load(), velmomax::GetDisabled(&x->ob));
    });
}

t_max_err tesk_fixnan_set_attr(tesk_fixnan_t* x, void* attr, long argc, t_atom* argv) {
    if (argc < 1 || !argv) return MAX_ERR_NONE;
    Guarded(x, [&] {
        const t_symbol* name = velmomax::get_attr_name(attr);
        if (name == velmomax::CommonSymbol(velmomax::SlotOf("numchannels"))) {
            setNumChannels(x, argv);
        } else if (name == gensym("replaceby")) {
            setReplacementValue(x, argv);
        } else if (name == velmomax::CommonSymbol(velmomax::SlotOf("mode"))) {
            setMode(x, argv);
        } else {
            object_error(asObject(x), "unknown attribute %s", name->s_name);
        }
    });
    return MAX_ERR_NONE;
}
