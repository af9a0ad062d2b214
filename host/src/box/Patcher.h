#pragma once

#include "ext.h"

namespace velmohost {

/// A patcher and a box in it, as objects find them under "#P" and "#B". Each is freed with `object_free`. Main thread.
t_object* NewPatcherObject();
t_object* NewBoxObject();

}  // namespace velmohost
