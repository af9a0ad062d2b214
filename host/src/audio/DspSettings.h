#pragma once

namespace velmohost {

/// Largest signal vector that the host runs, in samples.
inline constexpr long kMaxVectorSize = 2048;

/// What `sys_getsr`, `sys_getblksize` and `sys_getdspstate` answer, with audio on or off.
struct DspSettings {
    double samplerate = 44100.0;  ///< in Hz, above 0
    long vectorSize = 64;         ///< samples of a signal vector, 1 to `kMaxVectorSize`
    bool running = false;         ///< whether audio is on
};

/// The settings in force. Any thread, real-time safe.
DspSettings GetDspSettings() noexcept;

/// Puts settings in force: before an object is created, so that its constructor sees the rate it will run at. Main
/// thread while no vector is being processed.
void SetDspSettings(const DspSettings& settings) noexcept;

}  // namespace velmohost
