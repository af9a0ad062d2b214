/// The suite's common symbols: every name that objects of the suite compare or look up, interned once at load time.
///
///     velmomax::InitCommonSymbols();                                  // entry point, before class_new
///     if (name == velmomax::CommonSymbol(velmomax::SlotOf("mode")))   // anywhere after that: pointers compare
#pragma once

#include <array>
#include <string_view>

#include "velmomax_api.h"

namespace velmomax {

/// The names by slot. The slot numbers are shared by all code of the suite: names are only ever added at the end.
// clang-format off
inline constexpr std::array<std::string_view, 404> commonSymbolNames{
    /*   0 */ "active", "add", "air", "annotation", "anchor", "angular", "aperture", "append", "area", "areas",
    /*  10 */ "attr_modified", "autodrywet", "autofrontback", "axis", "az", "azim", "azimuth", "background",
              "backgroundcolor", "bang",
    /*  20 */ "barycenter", "binaural", "bitdepth", "bgcolor", "blocksize", "bpatcher", "bpc", "bril", "buffer",
              "buffering",
    /*  30 */ "buffername", "buffer_modified", "buffersize", "buffer~", "bug", "bypass", "cascade", "cascades",
              "category", "channel",
    /*  40 */ "cluster", "clear", "cm", "color", "colormap", "column", ",", "count", "crit", "crossfadetime",
    /*  50 */ "cursor", "cursorcolor", "cutoff", "curvecolor", "dB", "dblclick", "decoding", "default", "deg",
              "delay",
    /*  60 */ "delays", "description", "digest", "direct", "directeq", "dirty", "dist", "distr", "distance",
              "dontreset",
    /*  70 */ "done", "doppler", "down", "drywet", "drop", "dropmode", "dsp_add64", "dynamic", "early", "echodensity",
    /*  80 */ "emitter", "", "enabled", "end", "enumvals", "error", "face", "fact", "fadein", "fadeout",
    /*  90 */ "false", "fftsize", "fh", "filelist", "filename", "filesaved", "filesize", "filter", "fir", "fgcolor",
    /* 100 */ "fl", "float", "float64", "folder", "font", "free", "freq", "freqs", "format", "front",
    /* 110 */ "frontback", "frontal", "fullpath", "g0", "G0", "gh", "Gh", "gl", "Gl", "gm",
    /* 120 */ "Gm", "gain", "gains", "getname", "globalsymbol_binding", "globalsymbol_unbinding", "grids",
              "gridcolor", "groupref", "header",
    /* 130 */ "heaviness", "height", "hidden", "hint", "ignoreclick", "iir", "irsaved", "image", "infinite",
              "inputdelay",
    /* 140 */ "inputlevel", "interpolationmode", "interpolationtime", "invisible", "iterations", "kemar", "KEMAR",
              "kurtosis", "label", "latency",
    /* 150 */ "length", "level", "levels", "list", "listener", "liveness", "locked", "long", "lookat", "low",
    /* 160 */ "m", "magnitude", "marker", "markerspos", "matrix", "max", "maxvalue", "maxorder", "min", "minvalue",
    /* 170 */ "mode", "mouse", "mm", "multipleoutlets", "mute", "name", "namespace", "nativewindow", "nearfield",
              "noise",
    /* 180 */ "none", "norm", "normalize", "null", "numanchors", "numchannels", "numcols", "numdelays", "numinputs",
              "numinternals",
    /* 190 */ "numleds", "nummarkers", "numoutputs", "numrows", "numsources", "numreverbs", "numspeakers", "offset",
              "omni", "options",
    /* 200 */ "order", "orientation", "output", "outputlevel", "overlap", "oversampling", "overwrite", "panning",
              "parallel", "parameter_enable",
    /* 210 */ "params", "patching_position", "patching_rect", "patching_size", "patcherview", "pause", "peak",
              "peakhold", "peripheric", "perform",
    /* 220 */ "phase", "phi", "pitch", "post", "pres", "presentation", "presentation_position", "presentation_rect",
              "presentation_size", "progress",
    /* 230 */ "Q", "rad", "radius", "ramp", "rate", "recallpreset", "receiver", "rect", "remove", "renderer",
    /* 240 */ "reset", "reverb", "rms", "robust", "roll", "rolloff", "room", "roomsize", "route", "row",
    /* 250 */ "rt10", "rt20", "rt30", "samplerate", "samples", "selected", "selection", "selstart", "selend", "shape",
    /* 260 */ "showcursor", "size", "sizeinsamps", "solo", "soundspeed", "source", "sources", "sourcecolor",
              "tesknamespace", "span",
    /* 270 */ "speaker", "speakers", "spread", "spreadxyz", "sr", "standard", "start", "status", "stereo", "subgain",
    /* 280 */ "subtype", "sum", "symbol", "tab", "taps", "thickness", "threshold", "times", "tmax", "tod",
    /* 290 */ "top", "tr0", "trl", "trm", "trh", "trans2bin", "trim", "true", "type", "units",
    /* 300 */ "unwrap", "varname", "verbose", "velocity", "viewername", "visible", "vzoom", "warning", "waveform",
              "wclose",
    /* 310 */ "weights", "wfs", "width", "window", "windowmoveable", "windowresizeable", "windowsize", "windowtitle",
              "windowtopleft", "x",
    /* 320 */ "xy", "xyz", "y", "ymax", "ymin", "yaw", "z", "zoom", "zoomfactor", "zoomlock",
    /* 330 */ "ad", "ade", "ae", "aed", "azim++", "dist++", "dist*=", "elev", "elevation", "elev++",
    /* 340 */ "tesk3", "x++", "y++", "z++", "airfreq", "cluster_distr", "cluster_end", "cluster_start",
              "crossearselection", "dbap",
    /* 350 */ "delayscorrection", "distanceattenuation", "early_distr", "early_end", "early_shape", "early_start",
              "early_width", "env", "hlshelf", "panr",
    /* 360 */ "transaural", "sourcespositions", "speakerspositions", "hrtffile", "nearfieldhrtffile",
              "nfcompensationfilters", "warmth", "prer", "revp", "gainscorrection",
    /* 370 */ "sourcemute", "sourcesolo", "pan_rev", "modaldensity", "vbap", "vbap2d", "hoa2d", "hoa3d", "nfchoa2d",
              "nfchoa3d",
    /* 380 */ "orientationmode", "reverb_start", "roomairabsorption", "roomairrolloff", "numcascades", "reverberance",
              "listenerposition", "listeneryaw", "listenerpitch", "listenerroll",
    /* 390 */ "transauralfile", "showaperture", "showcriteria", "showviewer", "speakerseq", "speakerstimealignment",
              "reverbid", "rpy", "outputfiltersfreq", "outputfiltersQ",
    /* 400 */ "outputfiltersgain", "outputfilterstype", "sourceairabsorption", "roomactive",
};
// clang-format on

/// The slot of `name`, found by the compiler; a name outside the table does not compile.
consteval unsigned int SlotOf(std::string_view name) {
    for (unsigned int slot = 0; slot < commonSymbolNames.size(); ++slot) {
        if (commonSymbolNames[slot] == name) return slot;
    }
    throw "not one of the suite's common symbols";
}

/// The table: 404 symbols by slot. Null until `InitCommonSymbols` has run. Written once on the main thread before any
/// object exists; afterwards read by any thread, real-time safe.
extern t_symbol** velmomax_common_symbols;

/// The symbol in `slot`, 0 to 403. Only after `InitCommonSymbols`. Any thread, real-time safe.
inline t_symbol* CommonSymbol(unsigned int slot) noexcept { return velmomax_common_symbols[slot]; }

/// Interns every name of the table in its slot and returns the table, which lives as long as the process. Main thread.
t_symbol** velmomax_common_symbols_gettable() noexcept;

/// Initialises the host's own common symbols, then the suite's. Every entry point calls it before `class_new`; calling
/// it again changes nothing. Main thread.
void InitCommonSymbols() noexcept;

}  // namespace velmomax
