#pragma once

namespace velmodsp {

class String;

/// Is told of bad samples: derive from it and register it with `MultiFixNaN::AddListener`.
class FixNaNListener {
public:
    virtual ~FixNaNListener() = default;

    /// A channel met its first NaN or infinite sample since it was made or re-armed. `channelName` is the channel's
    /// label, for example "Channel #1"; it outlives the call only together with the channel.
    ///
    /// Called on the audio thread, in the middle of a block: it should not allocate, block or take long, and must not
    /// throw.
    virtual void NaNOccured(const String& channelName) = 0;
};

}  // namespace velmodsp
