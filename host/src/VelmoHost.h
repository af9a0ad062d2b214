#pragma once

/// The headless host in one header: what embeds it, such as the command line and the tests, includes this.
///
///     velmohost::Host host({"build/release/package/externals"});
///     auto box = velmohost::Box::Create(host, "tesk.fixnan~ @numchannels 2");
///     velmohost::DspChain chain;
///     chain.Start(*box, 48000.0, 64, {true, true}, {true, true});
///
/// Everything runs on the main thread but `DspChain::ProcessVectors`, for which `AudioThread` brings a thread.

#include "audio/AudioThread.h"
#include "audio/DspChain.h"
#include "audio/DspSettings.h"
#include "box/Box.h"
#include "box/BoxText.h"
#include "box/Host.h"
#include "box/Preset.h"
#include "core/AtomText.h"
#include "core/Classes.h"
#include "core/Messages.h"
#include "core/Objects.h"
#include "sound/SoundSink.h"
#include "sound/SoundSource.h"
#include "window/MaxWindow.h"
