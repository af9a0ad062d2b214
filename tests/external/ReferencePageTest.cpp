#include <gmock/gmock.h>
#include <libxml/parser.h>

#include "PluginFixture.h"

#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace {

using ReferencePage = PluginFixture;

TEST_F(ReferencePage, IsTheExpectedOneByteForByteAndReadsInAnXmlParser) {
    const TempFolder home;
    const ScopedVariable lower("home", std::nullopt), upper("HOME", home.Path().string());
    const std::string path = home / "tesk.fixnan~.maxref.xml";
    const auto box = Create("@numchannels 2");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Send(*box, "generatexml"), Rows{"[post] tesk.fixnan~: documentation generated in " + path});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "value = |lastvalue givenvalue|\n") << "the choices";

    // The version tells the day of building, so the expected page has a place for it.
    const std::string version = Send(*box, "version").at(0).substr(std::string("[post] tesk.fixnan~: Version ").size());
    EXPECT_THAT(version, testing::MatchesRegex("4\\.7\\.7 \\(Build [A-Z][a-z][a-z] [1-9][0-9]? 20[0-9][0-9]\\) "
                                               "\\(32 bits float\\)"));
    std::string expected = ReadBytes(VELMO_PROJECT_DIR "/tests/external/tesk.fixnan~.maxref.xml");
    const std::string place = "{VERSION}";
    ASSERT_NE(expected.find(place), expected.npos);
    expected.replace(expected.find(place), place.size(), version);
    EXPECT_EQ(ReadBytes(path), expected);

    xmlDoc* const document = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
    ASSERT_NE(document, nullptr) << "not well-formed; the parser has told why";
    EXPECT_EQ(xmlChildElementCount(xmlDocGetRootElement(document)), 11u);
    xmlFreeDoc(document);
}

}  // namespace
