// Each repair on the damage it undoes: the damaged text, the text it repairs it to, and
// the answers the lenient parse then gives, which are the clean document's.
#include "engine/repairs.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "aamva/repairs.h"
#include "orvane_parser.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

std::string sample(const char* name) { return testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / "samples" / name); }

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

std::string toUtf8(const std::string& latin1) {
    std::string out;
    for (unsigned char c : latin1) {
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

// The text through the whole repair table; "" when nothing applied.
std::string repairAll(const std::string& text, uint32_t* applied) {
    std::vector<char> out(text.size() * 2 + 64), spare(text.size() * 2 + 64);
    const int32_t length = repairText(testing::span(text), out.data(), spare.data(),
                                      static_cast<int32_t>(out.size()), applied);
    return length < 0 ? std::string() : std::string(out.data(), static_cast<size_t>(length));
}

std::string answer(SVT_ParserHandle* h, int (*getter)(SVT_ParserHandle*, char*, int)) {
    char buffer[256];
    return getter(h, buffer, sizeof buffer) == SVT_OK ? std::string(buffer) : std::string("-");
}

// The answers a reading is judged by.
std::string keyAnswers(SVT_ParserHandle* h) {
    int group = -1;
    int id = -1;
    SVT_getFormat(h, &group, &id);
    return std::to_string(id) + "|" + answer(h, SVT_getFirstName) + "|" + answer(h, SVT_getLastName) + "|" +
           answer(h, SVT_getBirthdate) + "|" + answer(h, SVT_getExpirationDate) + "|" + answer(h, SVT_getLicenseNumber) +
           "|" + answer(h, SVT_getAddress1) + "|" + answer(h, SVT_getCity) + "|" + answer(h, SVT_getPostalCode);
}

TEST(Repairs, EachUndoesItsDamageAndTheCleanAnswersFollow) {
    const std::string arizona = sample("aamva-2013-arizona.txt");
    const std::string mexican = sample("national-mexico-latin1.txt");
    const std::string guatemalan = sample("national-guatemala.txt");
    std::string runTogether = arizona;  // the body's line feeds lost
    const size_t body = runTogether.find("DLDAQ");
    runTogether = runTogether.substr(0, body) + replaced(runTogether.substr(body), "\n", "");
    struct Case {
        const char* damage;
        std::string clean;
        std::string damaged;
        std::string repaired;  // the text the repairs give
        const char* applied;   // the repairs that applied
        const char* reported;  // those the lenient parse reports: "-" when the damage cost nothing
    };
    const Case cases[] = {
        {"UTF-8 for Latin-1", mexican, toUtf8(mexican), mexican, "utf8-to-latin1", "utf8-to-latin1"},
        {"symbology identifier", arizona, "]L2" + arizona, arizona, "symbology-identifier", "symbology-identifier"},
        {"stray high bytes", arizona, replaced(arizona, "\n", "\n\x90"), arizona, "stray-high-bytes", "stray-high-bytes"},
        {"header word without its blank", arizona, replaced(arizona, "ANSI 6", "ANSI6"), arizona, "header-marker",
         "header-marker"},
        {"header word a letter short", arizona, replaced(arizona, "ANSI 6", "NSI 6"), arizona, "header-marker",
         "header-marker"},
        {"separators typed as letters", arizona, replaced(arizona, "@\n\x1e\r", "@ac"), arizona, "header-separators",
         "header-separators"},
        {"separators dropped", arizona, replaced(arizona, "@\n\x1e\r", "@"), arizona, "header-separators",
         "header-separators"},
        {"indented lines", arizona, replaced(replaced(arizona, "\n", "\n  "), "@\n  \x1e\r", "@\n\x1e\r"), arizona,
         "line-indents", "line-indents"},
        // The readers split elements at the header's carriage return too, so nothing was lost.
        {"carriage returns for line feeds", arizona, replaced(arizona, "\n", "\r"), replaced(arizona, "\r", "\n").replace(2, 2, "\x1e\r"),
         "crlf-lines,header-separators", "-"},
        {"indented element lines without a header", guatemalan, replaced(guatemalan, "\n", "\n \t"),
         guatemalan + " \t", "line-indents", "line-indents"},  // blanks before no element stay
        {"dates with slashes", arizona, replaced(arizona, "DBB07041988", "DBB07/04/1988"), arizona, "slash-dates",
         "slash-dates"},
        {"dates year first", arizona, replaced(arizona, "DBB07041988", "DBB1988-07-04"), replaced(arizona, "DBB07041988", "DBB19880704"),
         "slash-dates", "slash-dates"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.damage);
        uint32_t applied = 0;
        EXPECT_EQ(repairAll(c.damaged, &applied), c.repaired);
        char names[256];
        ASSERT_EQ(writeRepairNames(applied, names, sizeof names), SVT_OK);
        EXPECT_STREQ(names, c.applied);

        testing::HandlePtr strict(SVT_create());
        ASSERT_EQ(SVT_parse(strict.get(), c.clean.data(), static_cast<int>(c.clean.size())), SVT_OK);
        testing::HandlePtr lenient(SVT_create());
        ASSERT_EQ(SVT_parseLenient(lenient.get(), c.damaged.data(), static_cast<int>(c.damaged.size())), SVT_OK);
        EXPECT_EQ(keyAnswers(lenient.get()), keyAnswers(strict.get()));
        EXPECT_EQ(answer(lenient.get(), SVT_getRepairs), c.reported);
    }
    // Elements run together are split before each element id the tables know, once each.
    uint32_t applied = 0;
    const std::string split = repairAll(runTogether, &applied);
    EXPECT_EQ(split.substr(0, body), arizona.substr(0, body));
    EXPECT_NE(split.find("\nDCSSAMPLE\n"), std::string::npos) << split;
    testing::HandlePtr lenient(SVT_create());
    ASSERT_EQ(SVT_parseLenient(lenient.get(), runTogether.data(), static_cast<int>(runTogether.size())), SVT_OK);
    EXPECT_EQ(answer(lenient.get(), SVT_getFirstName), "JORDAN");
    EXPECT_EQ(answer(lenient.get(), SVT_getBirthdate), "07/04/1988");
    EXPECT_EQ(answer(lenient.get(), SVT_getRepairs), "crlf-lines,header-separators,element-separators");
}

TEST(Repairs, TextWithoutTheirDamageIsLeftAlone) {
    // Layouts of their own: line feeds in the header, dashes in dates, stripes' CR LF.
    for (const std::string& input : testing::sampleInputs()) {
        uint32_t applied = 0;
        repairAll(input, &applied);
        EXPECT_FALSE(anyDecisive(applied)) << input.substr(0, 40);
    }
    std::vector<char> out(64);
    for (RepairStep step : {repairHeaderMarker, repairHeaderSeparators, repairLineIndents, repairElementSeparators,
                            repairSlashDates, repairUtf8ToLatin1, repairSymbologyIdentifier, repairStrayHighBytes,
                            repairLineBreaks}) {
        for (const char* text : {"", "@", "]L", "ANSI 636026", "%TXDALLAS^DOE$JOHN^?", "\xC3", "@\n\x1e\rANSI 6"}) {
            EXPECT_EQ(step(makeSpan(text), out.data(), static_cast<int32_t>(out.size())), -1) << text;
        }
    }
}

TEST(Repairs, NamesFollowTheTableAndTheBuffer) {
    char names[64];
    EXPECT_EQ(writeRepairNames(0, names, sizeof names), SVT_ERR_NO_ANSWER);
    EXPECT_EQ(writeRepairNames(0b101, names, sizeof names), SVT_OK);
    EXPECT_STREQ(names, "utf8-to-latin1,stray-high-bytes");
    EXPECT_EQ(writeRepairNames(0b101, names, 10), SVT_ERR_NO_ANSWER);  // never a name cut short
    EXPECT_EQ(writeRepairNames(1, nullptr, 10), SVT_ERR_INVALID_ARGUMENT);
    EXPECT_EQ(writeRepairNames(1, names, 0), SVT_ERR_INVALID_ARGUMENT);
}

}  // namespace
}  // namespace orvane
