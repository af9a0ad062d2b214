#include "TeskMaxMspDocumentation.h"

#include <iostream>

namespace Tesk {

using velmodsp::String;

String MaxMspDocumentation::CoordinatesDescription(const char* object) {
    // The blanks before the colons line the explanations up.
    String description(
        "the <m> OBJECT </m> message sets one OBJECT property. <br/>syntax : OBJECT [index] [property] [value] <br/>"
        "Examples : <br/>"
        "<m> OBJECT 2 xyz -1. 1. 0.5 </m>    :   sets OBJECT position using 3D cartesian coordinates x, y and z "
        "(metres) <br/>"
        "<m> OBJECT 2 xy -1. 1. </m>         :   sets OBJECT position using 2D cartesian coordinates x and y (metres) "
        "<br/>"
        "<m> OBJECT 2 aed 45. 10. 2. </m>    :   sets azimuth (degrees), elevation (degrees) and distance (metres) "
        "<br/>"
        "<m> OBJECT 2 ade 45. 2. 10. </m>    :   sets azimuth (degrees), distance (metres) and elevation (degrees) "
        "<br/>"
        "<m> OBJECT 2 ad 45. 2. </m>         :   sets azimuth and distance, keeps elevation <br/>"
        "<m> OBJECT 2 ae 45. 10. </m>        :   sets azimuth and elevation, keeps distance <br/>"
        "<m> OBJECT 2 az 45. </m>            :   sets azimuth only, keeps distance and elevation <br/>"
        "<m> OBJECT 2 azim 45. </m>          :   sets azimuth only (same as az) <br/>"
        "<m> OBJECT 2 dist 2. </m>           :   sets distance only, without changing the direction <br/>"
        "<m> OBJECT 2 elev 10. </m>          :   sets elevation only <br/>"
        "<m> OBJECT 2 45. 2. 10. </m>        :   sets azimuth, distance and elevation (default for bare numbers) <br/>"
        "<m> OBJECT 2 tesk3 45. 2. 10. </m>  :   sets azimuth, distance and elevation with Tesk v3.x orientation "
        "<br/>");
    description.Replace("OBJECT", object);
    return description;
}

void MaxMspDocumentation::initMessageMap() noexcept {
    if (!messageMap.empty()) return;
    messageMap["loudspeakers"] = LoudspeakersMessageDescription;
    messageMap["loudspeaker"] = LoudspeakerMessageDescription;
    messageMap["speakers"] = SpeakersMessageDescription;
    messageMap["speaker"] = SpeakerMessageDescription;
    messageMap["listener"] = ListenerMessageDescription;
    messageMap["open"] = OpenMessageDescription;
    messageMap["wclose"] = WCloseMessageDescription;
    messageMap["info"] = InfoMessageDescription;
    messageMap["clear"] = ClearMessageDescription;
}

String MaxMspDocumentation::GetMethodDescriptionAsString(const String& message) noexcept {
    initMessageMap();
    const auto found = messageMap.find(message);
    if (found == messageMap.end()) {
        std::cerr << "unknwon method : " << message << std::endl;
        return String();
    }
    return found->second;
}

}  // namespace Tesk
