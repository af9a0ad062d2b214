#include "box/Box.h"

#include <algorithm>
#include <array>

#include "box/BoxText.h"
#include "box/Host.h"
#include "box/Patcher.h"
#include "core/ClassRecord.h"
#include "core/Creation.h"
#include "core/Messages.h"
#include "core/Objects.h"
#include "core/Owned.h"
#include "ext_obex.h"
#include "window/MaxWindow.h"
#include "z_dsp.h"

namespace velmohost {
namespace {

bool IsSignalObject(t_object* object) { return FindMethod(object, gensym("nsiginlets")) != nullptr; }

}  // namespace

std::unique_ptr<Box> Box::Create(Host& host, const std::string& boxText) {
    std::optional<BoxText> text = ParseBoxText(boxText);
    if (!text) {
        PostRow(RowKind::Error, nullptr, ("no object name in \"" + boxText + "\"").c_str());
        return nullptr;
    }
    t_class* const boxClass = host.Loader().FindClass(text->className->s_name);
    if (boxClass == nullptr) return nullptr;

    std::unique_ptr<Box> box(new Box);
    box->className = text->className->s_name;
    box->patcher = NewPatcherObject();
    box->boxObject = NewBoxObject();
    box->object = CreateInstance(boxClass, text->className, static_cast<long>(text->arguments.size()),
                                 text->arguments.data(), box->boxObject, box->patcher);
    return box->object != nullptr ? std::move(box) : nullptr;
}

Box::~Box() {
    object_free(object);
    object_free(boxObject);
    object_free(patcher);
}

bool Box::Send(const std::string& messageText) {
    std::optional<MessageText> message = ParseMessageText(messageText);
    if (!message) return false;
    return SendMessage(object, 0, message->selector, static_cast<long>(message->arguments.size()),
                       message->arguments.data());
}

bool Box::PostMissing(const char* message) const {
    PostRow(RowKind::Error, className.c_str(), ("doesn't understand \"" + std::string(message) + '"').c_str());
    return false;
}

std::optional<Preset> Box::StorePreset() {
    t_symbol* const message = gensym("preset");
    const t_messlist* const entry = FindMessage(object, message);
    if (entry == nullptr) {
        PostMissing("preset");
        return std::nullopt;
    }
    const bool isUntyped = entry->m_type[0] == A_CANT;
    return CollectPreset(object, [&] {
        isUntyped ? CallPlugin<void>(entry->m_fun, object) : void(SendMessage(object, 0, message, 0, nullptr));
    });
}

bool Box::RecallPreset(const Preset& preset) {
    bool isUnderstood = !preset.empty();
    for (const PresetLine& line : preset) {
        if (line.className != object_classname(object)) {
            PostRow(RowKind::Error, className.c_str(), ("the preset is for " + FormatPresetLine(line)).c_str());
            isUnderstood = false;
            continue;
        }
        std::vector<t_atom> arguments = line.arguments;
        isUnderstood &= SendMessage(object, 0, line.selector, static_cast<long>(arguments.size()), arguments.data());
    }
    return isUnderstood;
}

std::optional<std::vector<t_atom>> Box::GetValueOf() {
    const method getter = FindMethod(object, gensym("getvalueof"));
    if (getter == nullptr) {
        PostMissing("getvalueof");
        return std::nullopt;
    }
    long ac = 0;
    t_atom* av = nullptr;  // both zero: the object is to allocate the atoms, which are then the host's
    const auto result = CallPlugin<t_max_err>(getter, object, &ac, &av);
    const OwnedMemory<t_atom> owner(av);
    std::vector<t_atom> value;
    if (av != nullptr && ac > 0) value.assign(av, av + ac);
    if (result == MAX_ERR_NONE) return value;
    PostRow(RowKind::Error, className.c_str(), "gives no value");
    return std::nullopt;
}

bool Box::SetValueOf(std::vector<t_atom> value) {
    const method setter = FindMethod(object, gensym("setvalueof"));
    if (setter == nullptr) return PostMissing("setvalueof");
    const auto result = CallPlugin<t_max_err>(setter, object, static_cast<long>(value.size()), value.data());
    return result == MAX_ERR_NONE;
}

unsigned Box::NumInlets() const { return static_cast<unsigned>(GetInlets(object).size()); }

unsigned Box::NumOutlets() const { return static_cast<unsigned>(GetOutlets(object).size()); }

unsigned Box::NumSignalInlets() const {
    if (!IsSignalObject(object)) return 0;
    return static_cast<unsigned>(reinterpret_cast<const t_pxobject*>(object)->z_count);
}

unsigned Box::NumSignalOutlets() const {
    const std::vector<OutletInfo> outlets = GetOutlets(object);
    return static_cast<unsigned>(std::count_if(outlets.begin(), outlets.end(),
                                               [](const OutletInfo& outlet) { return outlet.type == "signal"; }));
}

std::string Box::InletAssist(unsigned inlet) const { return Assist(ASSIST_INLET, inlet); }

std::string Box::OutletAssist(unsigned outlet) const { return Assist(ASSIST_OUTLET, outlet); }

std::string Box::Assist(long side, unsigned index) const {
    constexpr std::size_t kTextBytes = 512;  // what objects count on
    std::array<char, kTextBytes> text{};
    CallMethod(object, gensym("assist"), boxObject, side, static_cast<long>(index), text.data());
    text.back() = '\0';
    return text.data();
}

}  // namespace velmohost
