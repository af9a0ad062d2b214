#pragma once

namespace velmohost {

/// The part of a block in which a thread must keep to real time: no allocation, no lock, no call of the system. It
/// lasts as long as the object; contexts of one thread do not nest.
///
///     const RealtimeContext realtime;
///     perform(object, dsp64, ins, numIns, outs, numOuts, n, flags, userParameter);
///
/// In velmohost nothing watches over it. A program built with `velmo_check_realtime` ends with a report on the first
/// breach; see CheckedRealtimeContext.h.
class RealtimeContext {
public:
    RealtimeContext() noexcept;
    ~RealtimeContext();
    RealtimeContext(const RealtimeContext&) = delete;
    RealtimeContext& operator=(const RealtimeContext&) = delete;
};

}  // namespace velmohost
