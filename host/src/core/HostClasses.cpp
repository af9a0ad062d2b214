#include "core/HostClasses.h"

#include "core/ClassRecord.h"
#include "core/OutOfMemory.h"
#include "ext_obex.h"

namespace velmohost {

void RegisterHostClasses() {
    [[maybe_unused]] static const bool once = [] {
        for (t_class* c : {AtomArrayClass(), DictionaryClass(), StringClass()})
            Required(class_register(CLASS_NOBOX, c));
        return true;
    }();
}

}  // namespace velmohost
