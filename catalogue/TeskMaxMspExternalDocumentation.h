#pragma once

#include "TeskMaxMspExternal.h"
#include "text/VelmoDspString.h"

namespace Tesk {

/// What the reference page says of one kind of object; the classes of TeskExternals.h fill it in. The static queries
/// answer for an object's name and never print anything. All texts are plain, without markup. Main thread; not
/// real-time safe; every function ends the process when memory runs out.
///
///     MaxMspExternalDocumentation::GetClassSeeAlsoAsString("tesk.fixnan~");  // "tesk.fixnan, tesk.isnan~"
class MaxMspExternalDocumentation {
public:
    virtual ~MaxMspExternalDocumentation();

    virtual MaxMspExternal::Type GetType() const noexcept = 0;

    /// A few sentences that begin with the object's name.
    virtual velmodsp::String GetClassDescription() const noexcept = 0;

    /// One sentence.
    virtual velmodsp::String GetClassDigest() const noexcept = 0;

    /// Names of related objects, separated by ", ".
    virtual velmodsp::String GetClassSeeAlso() const noexcept = 0;

    /// The documentation of an object kind, which the caller deletes; null when `type` is none or is not documented.
    static MaxMspExternalDocumentation* create(const MaxMspExternal::Type& type) noexcept;

    /// The texts of the object `name`; empty when it is unknown or not documented.
    static velmodsp::String GetClassDescriptionAsString(const velmodsp::String& name) noexcept;
    static velmodsp::String GetClassDigestAsString(const velmodsp::String& name) noexcept;
    static velmodsp::String GetClassSeeAlsoAsString(const velmodsp::String& name) noexcept;
};

}  // namespace Tesk
