#include "realtime/RealtimeContext.h"

namespace velmohost {

RealtimeContext::RealtimeContext() noexcept = default;

RealtimeContext::~RealtimeContext() = default;

}  // namespace velmohost
