#pragma once

#include <map>

#include "text/VelmoDspString.h"

namespace Tesk {

/// The suite's standard descriptions of messages and attributes, so that all objects explain the same thing in the same
/// words. The texts carry the markup of the host's reference pages: "<m>" and "</m>" round names, "<br/>".
/// Main thread; not real-time safe. Constants and map are inline, so that they exist before every static that is
/// defined after this header.
class MaxMspDocumentation {
    /// The message that sets one property of one `object`, "speaker" or "source".
    static velmodsp::String CoordinatesDescription(const char* object);

public:
    /// Message name to description, for `GetMethodDescriptionAsString`. Empty until the first query.
    static inline std::map<velmodsp::String, velmodsp::String> messageMap;

    /// Fills `messageMap`; does nothing when it holds anything. Ends the process when memory runs out.
    static void initMessageMap() noexcept;

    /// The description of `message`; the empty text, after a line "unknwon method : MESSAGE" on standard error, when
    /// the map has none. Ends the process when memory runs out.
    static velmodsp::String GetMethodDescriptionAsString(const velmodsp::String& message) noexcept;

    /// @name Messages
    /// @{
    static inline const velmodsp::String LoudspeakersMessageDescription =
        "the <m> loudspkeakers </m> message is an alias to the <m> speakers </m> message.";

    static inline const velmodsp::String LoudspeakerMessageDescription =
        "the <m> loudspkeaker </m> message is an alias to the <m> speaker </m> message.";

    static inline const velmodsp::String SpeakersMessageDescription =
        "the <m> speakers </m> message is used to set the coordinates of all the speakers at once. "
        "<br/>syntax : speakers [property] [value] <br/>";

    static inline const velmodsp::String SpeakerMessageDescription = CoordinatesDescription("speaker");

    /// Not in `messageMap`: objects that have sources document the message themselves.
    static inline const velmodsp::String SourceMessageDescription = CoordinatesDescription("source");

    static inline const velmodsp::String ListenerMessageDescription =
        "sets listener property : <m> listener [property] [value] </m> <br/>Examples : <br/>"
        "<m> listener xyz 0. 1. 0. </m>     :   sets listener position using 3D cartesian coordinates <br/>"
        "<m> listener yaw 30. </m>          :   sets listener yaw angle <br/>"
        "<m> listener pitch 25. </m>        :   sets listener pitch angle <br/>"
        "<m> listener roll 40. </m>         :   sets listener roll angle <br/>"
        "<m> listener rpy 30. 25. 40. </m>  :   sets listener roll, pitch and yaw angles <br/>";

    static inline const velmodsp::String OpenMessageDescription =
        "opens the Graphical User Interface window. (or brings the window to front if it was already opened)";

    static inline const velmodsp::String WCloseMessageDescription = "closes the Graphical User Interface window.";

    static inline const velmodsp::String InfoMessageDescription =
        "posts information about the current state of the object in the Max window.";

    static inline const velmodsp::String ClearMessageDescription =
        "clears the internal state of the object (memories of the filters and/or delay lines, internal buffers, etc.)";
    /// @}

    /// @name Attributes
    /// @{
    static inline const velmodsp::String NumInternalsAttributeDescription =
        "The <m> numinternals </m> attribute is the number of channels that the object uses inside, for instance the "
        "feedback channels of a reverberator. More of them sound denser and take more processor time. It can only be "
        "set in the object box.";

    static inline const velmodsp::String NumChannelsAttributeDescription =
        "The <m> numchannels </m> attribute represents the number of input and output channels of the object. This  "
        "attribute must be set in the object box, when the object is instanciated; it can not be further set with a "
        "message, since  the number of signal inlets or outlets can not be changed dynamically.";

    static inline const velmodsp::String OutputFormatAttributeDescription =
        "The <m> outputformat </m> attribute chooses the coordinates in which positions leave the object: xyz, xy, "
        "aed, ade, ad or ae.";

    static inline const velmodsp::String PanTypeAttributeDescription =
        "The <m> panning </m> attribute chooses how sources are spread over the outputs: binaural or transaural, by "
        "pairs or triplets of speakers (vbap2d, vbap), by distance (dbap), ambisonic (hoa2d, hoa3d, nfchoa2d, "
        "nfchoa3d) or by wave field synthesis (wfs).";

    static inline const velmodsp::String SourcespositionsAttributeDescription =
        "The <m> sourcespositions </m> attribute lists the positions of all sources: x, y and z in metres for each "
        "source, one source after the other.";

    static inline const velmodsp::String SpeakerspositionsAttributeDescription =
        "The <m> speakerspositions </m> attribute lists the positions of all speakers: x, y and z in metres for each "
        "speaker, in the order of the outputs, seen from the centre of the listening area.";

    static inline const velmodsp::String InterpolationtimeAttributeDescription =
        "The <m> interpolationtime </m> attribute is the time in milliseconds that a parameter takes to reach a new "
        "value. Short times follow quick gestures, long ones avoid audible steps.";

    static inline const velmodsp::String SourcePresenceAttributeDescription =
        "How close and present the source seems: the energy of the direct sound and the earliest reflections. Lower "
        "values let the source recede into the room.";

    static inline const velmodsp::String SourceBrillanceAttributeDescription =
        "How bright the source sounds: the high frequencies of the direct sound and the earliest reflections, "
        "compared to the middle ones.";

    static inline const velmodsp::String SourceWarmthAttributeDescription =
        "How warm the source sounds: the low frequencies of the direct sound and the earliest reflections, compared to "
        "the middle ones.";

    static inline const velmodsp::String RoomPresenceAttributeDescription =
        "How present the room is: the energy of the late reflections and the reverberation, whatever the level of the "
        "source.";

    static inline const velmodsp::String RunningReverberanceAttributeDescription =
        "How reverberant the room sounds while music or speech goes on: the decay of its first part, which is heard "
        "between notes and syllables.";

    static inline const velmodsp::String EnvelopmentAttributeDescription =
        "How much the listener feels surrounded: the energy of the early reflections from the sides, compared to the "
        "direct sound.";

    static inline const velmodsp::String LateReverberanceAttributeDescription =
        "How long the room is heard after the music stops: the decay time of the late reverberation at middle "
        "frequencies.";

    static inline const velmodsp::String LivenessAttributeDescription =
        "How lively the room sounds: the decay time of the high frequencies, compared to the middle ones. Low values "
        "suggest curtains and carpets, high ones tiles and glass.";

    static inline const velmodsp::String HeavinessAttributeDescription =
        "How heavy the reverberation sounds: the decay time of the low frequencies, compared to the middle ones.";

    static inline const velmodsp::String WindowTileAttributeDescription =
        "The <m> windowtitle </m> attribute is the title of the object's window. Without it the window shows the name "
        "of the object.";
    /// @}
};

}  // namespace Tesk
