#include "TeskMaxMspExternal.h"

#include "utils/VelmoDspConsoleLog.h"

namespace Tesk {

using velmodsp::String;

namespace {

struct NamedType {
    const char* name;
    MaxMspExternal::Type type;
};

constexpr NamedType namedTypes[] = {
#define TESK_OBJECT(Class, name, digest, description, seeAlso) {name, MaxMspExternal::Class},
#define TESK_UNDOCUMENTED(Enumerator, name) {name, MaxMspExternal::Enumerator},
#define TESK_ALIAS(Class, name) {name, MaxMspExternal::Class},
#include "TeskObjects.def"
};

// Numbers that others rely on: a row that slipped in elsewhere than at the end of the table would move them.
static_assert(MaxMspExternal::FixNaN == 43 && MaxMspExternal::FixNaNTilda == 44);
static_assert(MaxMspExternal::FreqResponseEmbedded == 46 && MaxMspExternal::MonitorEmbedded == 80);
static_assert(MaxMspExternal::VelmoRoomTilda == 149);

}  // namespace

void MaxMspExternal::initExternalMap() noexcept {
    if (!externalMap.empty()) return;
    for (const NamedType& row : namedTypes) externalMap[row.name] = row.type;
}

MaxMspExternal::Type MaxMspExternal::GetExternal(const String& name) noexcept {
    initExternalMap();
    const auto found = externalMap.find(name);
    if (found == externalMap.end()) {
        velmodsp::ConsoleLog::Print("unknwon external : " + name);
        return static_cast<Type>(0);
    }
    return found->second;
}

}  // namespace Tesk
