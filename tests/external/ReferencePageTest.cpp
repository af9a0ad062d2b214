#include <gmock/gmock.h>

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <filesystem>
#include <memory>

#include "PluginFixture.h"

#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace {

/// The page that the object writes about itself, and what the Max window says meanwhile.
class ReferencePage : public PluginFixture {
protected:
    ReferencePage() {
        const ScopedVariable lower("home", std::nullopt), upper("HOME", home.Path().string());
        const auto box = Create("@numchannels 2");
        version = Send(*box, "version").at(0).substr(std::string("[post] tesk.fixnan~: Version ").size());
        rows = Send(*box, "generatexml");
        page = ReadBytes(path);
    }

    const TempFolder home;
    const std::string path = home / "tesk.fixnan~.maxref.xml";
    std::string version, page;
    Rows rows;
};

TEST_F(ReferencePage, IsTheSameByteForByte) {
    EXPECT_EQ(rows, Rows{"[post] tesk.fixnan~: documentation generated in " + path});
    // The version tells the day of building, so the expected page has a place for it.
    EXPECT_THAT(version, testing::MatchesRegex("4\\.7\\.7 \\(Build [A-Z][a-z][a-z] [1-9][0-9]? 20[0-9][0-9]\\) "
                                               "\\(32 bits float\\)"));
    const auto folder = std::filesystem::path(__FILE__).parent_path();
    std::string expected = ReadBytes((folder / "tesk.fixnan~.maxref.xml").string());
    const std::string place = "{VERSION}";
    ASSERT_NE(expected.find(place), expected.npos);
    expected.replace(expected.find(place), place.size(), version);
    EXPECT_EQ(page, expected);
}

/// The page as somebody else's parser reads it; complaints are rows of the test's output.
class ParsedPage {
public:
    explicit ParsedPage(const std::string& text)
        : document(xmlReadMemory(text.data(), static_cast<int>(text.size()), "page.xml", nullptr, XML_PARSE_NONET),
                   xmlFreeDoc),
          context(document ? xmlXPathNewContext(document.get()) : nullptr, xmlXPathFreeContext) {}

    explicit operator bool() const { return document && context; }

    /// Texts of what an XPath selects.
    Rows Select(const char* xpath) const {
        const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> found(
            xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(xpath), context.get()), xmlXPathFreeObject);
        Rows texts;
        for (int i = 0; found && found->nodesetval && i < found->nodesetval->nodeNr; ++i) {
            xmlChar* const text = xmlNodeGetContent(found->nodesetval->nodeTab[i]);
            texts.emplace_back(reinterpret_cast<const char*>(text));
            xmlFree(text);
        }
        return texts;
    }

private:
    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document;
    std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context;
};

TEST_F(ReferencePage, ReadsInAnXmlParser) {
    const ParsedPage parsed(page);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed.Select("/c74object/@name"), Rows{"tesk.fixnan~"});
    EXPECT_EQ(parsed.Select("/c74object/description/o"), Rows{"tesk.fixnan~"});
    EXPECT_EQ(parsed.Select("/c74object/attributelist/attribute/@name"), (Rows{"mode", "numchannels", "replaceby"}));
    EXPECT_EQ(parsed.Select("//attribute[@name='mode']/attributelist/attribute[@name='enumvals']/@value"),
              Rows{"lastvalue givenvalue"});
    EXPECT_EQ(parsed.Select("/c74object/methodlist/method/@name"),
              (Rows{"generatexml", "version", "postattributes", "recallpreset", "exportdict", "dumpdict", "readdict",
                    "postdspstatus", "postdspstate", "clear"}));
    EXPECT_EQ(parsed.Select("//method[@name='postattributes']/arglist/arg/@type"), Rows{"symbol"});
    EXPECT_EQ(parsed.Select("//seealso/@name"), (Rows{"tesk.fixnan", "tesk.isnan~"}));
}

}  // namespace
