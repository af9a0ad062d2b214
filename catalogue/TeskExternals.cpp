#include "TeskExternals.h"

namespace Tesk::External {

using velmodsp::String;

#define TESK_OBJECT(Class, name, digest, description, seeAlso)                             \
    MaxMspExternal::Type Class::GetType() const noexcept { return MaxMspExternal::Class; } \
    String Class::GetClassDescription() const noexcept { return description; }             \
    String Class::GetClassDigest() const noexcept { return digest; }                       \
    String Class::GetClassSeeAlso() const noexcept { return seeAlso; }
#include "TeskObjects.def"

}  // namespace Tesk::External
