#include <gtest/gtest.h>

#include <regex>

#include "TeskCatalogue.h"

namespace Tesk {
namespace {

// Read while the program's statics are still being built, as a plug-in's own statics may do.
const velmodsp::String clearReadEarly = MaxMspDocumentation::GetMethodDescriptionAsString("clear");
const velmodsp::String speakerReadEarly = MaxMspDocumentation::SpeakerMessageDescription;

TEST(MaxMspDocumentation, DescribesNineMessagesByteForByte) {
    const std::vector<std::pair<const char*, std::string>> expected = {
        {"clear",
         "clears the internal state of the object (memories of the filters and/or delay lines, internal buffers, "
         "etc.)"},
        {"info", "posts information about the current state of the object in the Max window."},
        {"listener",
         "sets listener property : <m> listener [property] [value] </m> <br/>Examples : <br/>"
         "<m> listener xyz 0. 1. 0. </m>     :   sets listener position using 3D cartesian coordinates <br/>"
         "<m> listener yaw 30. </m>          :   sets listener yaw angle <br/>"
         "<m> listener pitch 25. </m>        :   sets listener pitch angle <br/>"
         "<m> listener roll 40. </m>         :   sets listener roll angle <br/>"
         "<m> listener rpy 30. 25. 40. </m>  :   sets listener roll, pitch and yaw angles <br/>"},
        {"loudspeaker", "the <m> loudspkeaker </m> message is an alias to the <m> speaker </m> message."},
        {"loudspeakers", "the <m> loudspkeakers </m> message is an alias to the <m> speakers </m> message."},
        {"open", "opens the Graphical User Interface window. (or brings the window to front if it was already opened)"},
        {"speaker", MaxMspDocumentation::SpeakerMessageDescription.Str()},
        {"speakers",
         "the <m> speakers </m> message is used to set the coordinates of all the speakers at once. "
         "<br/>syntax : speakers [property] [value] <br/>"},
        {"wclose", "closes the Graphical User Interface window."}};
    for (const auto& [message, description] : expected)
        EXPECT_EQ(MaxMspDocumentation::GetMethodDescriptionAsString(message).Str(), description);
    EXPECT_EQ(MaxMspDocumentation::messageMap.size(), expected.size());
    EXPECT_EQ(clearReadEarly.Str(), expected[0].second);
}

TEST(MaxMspDocumentation, ExplainsTheSpeakerMessageByTwelveAlignedExamples) {
    const std::string text = MaxMspDocumentation::SpeakerMessageDescription.Str();
    EXPECT_EQ(text.size(), 1317u);
    EXPECT_EQ(speakerReadEarly.Str(), text);

    const std::string beginning =
        "the <m> speaker </m> message sets one speaker property. <br/>"
        "syntax : speaker [index] [property] [value] <br/>Examples : <br/>";
    ASSERT_TRUE(text.starts_with(beginning));
    const std::string examples = text.substr(beginning.size());

    const std::regex example("<m> speaker 2 ([a-z]*3?) ?(-?[0-9]+\\.[0-9]* ?)+</m> +:   [^<]*<br/>");
    std::vector<std::string> keywords;
    std::ptrdiff_t end = 0;
    for (std::sregex_iterator match(examples.begin(), examples.end(), example), none; match != none; ++match) {
        EXPECT_EQ(match->position(), end) << "text between the examples";
        EXPECT_EQ(match->str().find(':'), 37u) << match->str();
        keywords.push_back((*match)[1]);
        end = match->position() + match->length();
    }
    EXPECT_EQ(end, std::ssize(examples));
    EXPECT_EQ(keywords, (std::vector<std::string>{"xyz", "xy", "aed", "ade", "ad", "ae", "az", "azim", "dist", "elev",
                                                  "", "tesk3"}));
    EXPECT_NE(examples.find("Tesk v3.x orientation"), std::string::npos);
}

TEST(MaxMspDocumentation, ReportsUnknownMessagesOnStandardErrorAlone) {
    // A source description exists, but each object with sources words the message itself.
    for (const std::string message : {"source", "nothing", ""}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(MaxMspDocumentation::GetMethodDescriptionAsString(message.c_str()).Str(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "unknwon method : " + message + "\n");
    }
    EXPECT_TRUE(MaxMspDocumentation::SourceMessageDescription.Str().starts_with(
        "the <m> source </m> message sets one source property. <br/>"));
    EXPECT_EQ(MaxMspDocumentation::SourceMessageDescription.Str().find("speaker"), std::string::npos);
}

}  // namespace
}  // namespace Tesk
