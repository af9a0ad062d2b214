#pragma once

#include <map>

#include "text/VelmoDspString.h"

namespace Tesk {

/// The objects of the suite by number and by name, as listed in TeskObjects.def. Main thread; not real-time safe.
///
///     MaxMspExternal::GetExternal("tesk.fixnan~");  // MaxMspExternal::FixNaNTilda, 44
class MaxMspExternal {
public:
    /// Number of an object kind: 0 to 149 without gaps, in the order of TeskObjects.def.
    enum Type : unsigned int {
#define TESK_OBJECT(Class, name, digest, description, seeAlso) Class,
#define TESK_UNDOCUMENTED(Enumerator, name) Enumerator,
#include "TeskObjects.def"
    };

    /// Object name, as typed in a box, to number: 156 names, six of which are aliases of others. Empty until the first
    /// query. Inline, so that it exists before every static that is defined after this header.
    static inline std::map<velmodsp::String, Type> externalMap;

    /// Fills `externalMap`; does nothing when it holds anything. Ends the process when memory runs out.
    static void initExternalMap() noexcept;

    /// The number of the object `name`; 0, after a line "unknwon external : NAME" in the console log, when there is
    /// none. Ends the process when memory runs out.
    static Type GetExternal(const velmodsp::String& name) noexcept;
};

}  // namespace Tesk
