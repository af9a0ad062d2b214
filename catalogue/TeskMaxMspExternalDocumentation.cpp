#include "TeskMaxMspExternalDocumentation.h"

#include <memory>

#include "TeskExternals.h"

namespace Tesk {

using velmodsp::String;

namespace {

using TextGetter = String (MaxMspExternalDocumentation::*)() const noexcept;

String TextOf(const String& name, TextGetter getText) noexcept {
    MaxMspExternal::initExternalMap();
    // Asked first, because GetExternal reports names it does not know.
    if (!MaxMspExternal::externalMap.contains(name)) return String();
    const std::unique_ptr<const MaxMspExternalDocumentation> documentation(
        MaxMspExternalDocumentation::create(MaxMspExternal::GetExternal(name)));
    return documentation ? ((*documentation).*getText)() : String();
}

}  // namespace

MaxMspExternalDocumentation::~MaxMspExternalDocumentation() = default;

MaxMspExternalDocumentation* MaxMspExternalDocumentation::create(const MaxMspExternal::Type& type) noexcept {
    switch (type) {
#define TESK_OBJECT(Class, name, digest, description, seeAlso) \
    case MaxMspExternal::Class:                                \
        return new External::Class;
#include "TeskObjects.def"
        default:
            return nullptr;
    }
}

String MaxMspExternalDocumentation::GetClassDescriptionAsString(const String& name) noexcept {
    return TextOf(name, &MaxMspExternalDocumentation::GetClassDescription);
}

String MaxMspExternalDocumentation::GetClassDigestAsString(const String& name) noexcept {
    return TextOf(name, &MaxMspExternalDocumentation::GetClassDigest);
}

String MaxMspExternalDocumentation::GetClassSeeAlsoAsString(const String& name) noexcept {
    return TextOf(name, &MaxMspExternalDocumentation::GetClassSeeAlso);
}

}  // namespace Tesk
