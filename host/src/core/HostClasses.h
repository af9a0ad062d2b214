#pragma once

#include "ext.h"

namespace velmohost {

// The host's own containers, which plug-ins also create by name.
t_class* AtomArrayClass();
t_class* DictionaryClass();
t_class* StringClass();

}  // namespace velmohost
