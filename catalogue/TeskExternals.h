#pragma once

#include "TeskMaxMspExternalDocumentation.h"

/// The documentation classes, one per documented row of TeskObjects.def: `FixNaN` for "tesk.fixnan", `FixNaNTilda` for
/// "tesk.fixnan~", `PanControl` for "tesk.pan.control" and so on.
namespace Tesk::External {

#define TESK_OBJECT(Class, name, digest, description, seeAlso)          \
    class Class final : public MaxMspExternalDocumentation {            \
    public:                                                             \
        MaxMspExternal::Type GetType() const noexcept override;         \
        velmodsp::String GetClassDescription() const noexcept override; \
        velmodsp::String GetClassDigest() const noexcept override;      \
        velmodsp::String GetClassSeeAlso() const noexcept override;     \
    };
#include "TeskObjects.def"

}  // namespace Tesk::External
