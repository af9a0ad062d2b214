#include "utils/VelmoDspInfos.h"

#include <climits>

namespace velmodsp {

int ApiInfos::GetFloatingPointPrecision() { return static_cast<int>(sizeof(float) * CHAR_BIT); }

String SystemInfos::GetOperatingSystemNameWithoutVersion() { return "Mac OS "; }

}  // namespace velmodsp
