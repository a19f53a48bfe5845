// The driver frames shared texts once, refuses rows by their quick checks and keeps the
// winner's record. The plain driver of plain_driver.h does none of that; both must leave
// the same status and the same record, byte for byte, for every sample, cut and altered,
// for the inputs of tests/data and for the peer inputs, failed parses included.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "engine/driver.h"
#include "engine/framers.h"
#include "engine/registry.h"
#include "engine/status.h"
#include "peer_inputs.h"
#include "plain_driver.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

// Both row sets: the strict parse's and the lenient parse's, which adds the zone layouts.
std::string compare(const std::string& input) {
    std::string strict = testing::compareDrivers(input, formatRegistry());
    if (!strict.empty()) return strict;
    std::string lenient = testing::compareDrivers(input, lenientRegistry());
    return lenient.empty() ? lenient : "lenient rows: " + lenient;
}

TEST(DriverEquivalence, SamplesCutAndAltered) {
    for (const std::string& sample : testing::sampleInputs()) {
        SCOPED_TRACE(sample.substr(0, 30));
        ASSERT_EQ(compare(sample), "");
        for (size_t length = 1; length < sample.size(); length += 5) ASSERT_EQ(compare(sample.substr(0, length)), "") << length;
        for (size_t at = 0; at < sample.size(); at += 3) {
            std::string altered = sample;
            altered[at] = static_cast<char>(altered[at] ^ 0x20);  // case and line breaks change
            ASSERT_EQ(compare(altered), "") << at;
        }
    }
}

TEST(DriverEquivalence, LongInputs) {
    const std::string sample = testing::sampleInputs().front();
    for (size_t size : {size_t{1800}, size_t{2100}, size_t{3000}, size_t{8191}, size_t{8192}, size_t{12000}}) {
        std::string padded = sample + std::string(size > sample.size() ? size - sample.size() : 0, 'Q');
        ASSERT_EQ(compare(padded), "") << size;
        ASSERT_EQ(compare(std::string(size, '@')), "") << size;
    }
}

TEST(DriverEquivalence, ZonesEndingLongInputs) {
    // The zone rows judge the caller's bytes, and the zone framing leaves out the last byte
    // of an input that fills the buffers: a zone whose last character stands there, or one
    // character short or long of its layout, must be judged as the framing sees it.
    for (const char* name : {"mrz-passport.txt", "mrz-id-card.txt", "mrz-td2.txt", "mrz-visa-a.txt"}) {
        std::string zone = testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / "samples" / name);
        zone.erase(std::remove(zone.begin(), zone.end(), '\n'), zone.end());
        for (const std::string& variant : {zone, zone.substr(0, zone.size() - 1), zone + "<", "p" + zone.substr(1)}) {
            for (size_t length : {size_t{8190}, size_t{8191}, size_t{8192}, size_t{8193}}) {
                const std::string padded = std::string(length - variant.size(), ' ') + variant;
                ASSERT_EQ(compare(padded), "") << name << " " << length;
                ASSERT_EQ(compare(padded + "-"), "") << name << " " << length;
            }
        }
    }
}

TEST(DriverEquivalence, FramingLongerThanTheInput) {
    // The header repairs add bytes, so the framed text outgrows the input; the framing and
    // the best record kept in the scratch buffer must leave it room.
    const std::string arizona = testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / "samples" / "aamva-2013-arizona.txt");
    std::string input = arizona;
    for (int extra = 1; extra <= 12; ++extra) {
        input += "@\n\n";
        ASSERT_EQ(compare(input), "") << extra;
    }
}

// A locale current for LC_CTYPE while the object lives: the system's when it has it,
// otherwise built by localedef (from the locales package's sources) into a scratch folder.
class ScratchLocale {
public:
    ScratchLocale(const char* name, const char* source, const char* charmap)
        : previous_(std::setlocale(LC_CTYPE, nullptr)) {
        if (std::setlocale(LC_CTYPE, name) != nullptr) return;
        folder_ = fs::temp_directory_path() / ("orvane-locale-" + std::to_string(getpid()));
        fs::create_directories(folder_);
        const std::string command = "localedef -i " + std::string(source) + " -f " + charmap + " '" +
                                    (folder_ / name).string() + "' >/dev/null 2>&1";
        const int built = std::system(command.c_str());
        if (const char* path = std::getenv("LOCPATH")) previousPath_ = path;
        setenv("LOCPATH", folder_.c_str(), 1);
        if (std::setlocale(LC_CTYPE, name) == nullptr) {
            failure_ = "no " + std::string(name) + " locale, and localedef could not build one (status " +
                       std::to_string(built) + "); the locales package holds its sources";
        }
    }
    ~ScratchLocale() {
        std::setlocale(LC_CTYPE, previous_.c_str());
        if (folder_.empty()) return;
        if (previousPath_.empty()) {
            unsetenv("LOCPATH");
        } else {
            setenv("LOCPATH", previousPath_.c_str(), 1);
        }
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    ScratchLocale(const ScratchLocale&) = delete;
    ScratchLocale& operator=(const ScratchLocale&) = delete;
    const std::string& failure() const { return failure_; }

private:
    std::string previous_;
    std::string previousPath_;
    fs::path folder_;
    std::string failure_;
};

TEST(DriverEquivalence, LocalesThatUpperCaseBeyondAscii) {
    // The driver upper-cases with the C library's mapping, and these locales take it off
    // its ASCII path. Latin-1 maps only high bytes, which end as blanks in every record;
    // Turkish also maps "i" to a high byte, so a driver that stayed on ASCII answers otherwise.
    struct Case {
        const char* name;
        const char* source;
        const char* charmap;
        int lower;
        int upper;
        bool answersDiffer;  // from the "C" locale's, for the Arizona licence
    };
    const Case cases[] = {
        {"en_US.ISO-8859-1", "en_US", "ISO-8859-1", 0xE9, 0xC9, false},
        {"tr_TR.ISO-8859-9", "tr_TR", "ISO-8859-9", 'i', 0xDD, true},
    };
    // The Arizona licence with lower-case letters, Latin-1 and ASCII, in its names and city.
    std::string arizona = testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / "samples" / "aamva-2013-arizona.txt");
    for (const auto& [from, to] : {std::pair<std::string, std::string>{"DACJORDAN", "DACjos\xE9"},
                                   {"DCSSAMPLE", "DCSm\xFCller"}, {"DAIPHOENIX", "DAIphoenix \xE0"}}) {
        const size_t at = arizona.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        arizona.replace(at, from.size(), to);
    }
    std::vector<std::string> inputs = testing::sampleInputs();
    for (std::string sample : testing::sampleInputs()) {
        std::replace(sample.begin(), sample.end(), 'E', '\xE9');
        inputs.push_back(sample);
    }
    inputs.push_back(arizona);
    const ParseClock clock{2026, 11, 22, 12, 0, 0};
    auto cityOf = [&clock](const std::string& input) {
        testing::RecordWithBuffer record;
        std::vector<char> copy(8192), framings(2 * 8192);
        parseBestFormat(input.data(), static_cast<int32_t>(input.size()), ParseBuffers{copy.data(), 8192, framings.data()},
                        record.get(), &clock);
        return testing::slotText(record.record, field::city);
    };
    const std::string plainCity = cityOf(arizona);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        // The test process sets the locale, never the library.
        ScratchLocale locale(c.name, c.source, c.charmap);
        if (!locale.failure().empty()) GTEST_SKIP() << locale.failure();
        ASSERT_EQ(std::toupper(c.lower), c.upper);
        for (const std::string& input : inputs) ASSERT_EQ(compare(input), "") << input.substr(0, 40);
        EXPECT_EQ(cityOf(arizona) != plainCity, c.answersDiffer) << cityOf(arizona);
    }
}

TEST(DriverEquivalence, InputsReadersRewriteInPlace) {
    // Readers fold Latin-1 letters and delete line feeds in their own copy of the text, and
    // the version is read from the text as the winner's reader left it.
    std::string folded = testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / "samples" / "national-puerto-rico.txt");
    const size_t ansi = folded.find("ANSI");
    ASSERT_NE(ansi, std::string::npos);
    folded[ansi] = '\xC4';
    ASSERT_EQ(compare(folded), "");
    for (const auto& entry : fs::directory_iterator(fs::path(ORVANE_SOURCE_DIR) / "tests" / "data" / "regressions")) {
        ASSERT_EQ(compare(testing::readBytes(entry.path())), "") << entry.path().filename();
    }
}

TEST(DriverEquivalence, TestData) {
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(ORVANE_SOURCE_DIR) / "tests" / "data")) {
        if (!entry.is_regular_file() || entry.path().extension() == ".expected") continue;
        ASSERT_EQ(compare(testing::readBytes(entry.path())), "") << entry.path();
    }
}

// The driver hands a reader that only reads its text the shared framing itself, so a
// reader the registry marks so must leave every byte of it as it was.
TEST(DriverEquivalence, ReadOnlyReadersLeaveTheirText) {
    std::vector<std::string> inputs = testing::sampleInputs();
    for (const auto& peer : testing::readPeerInputs(testing::peerFolder())) inputs.push_back(peer.bytes);
    const ParseClock clock{2026, 11, 22, 12, 0, 0};
    testing::RecordWithBuffer record(8192);
    std::vector<char> text(8192), before(8192);
    for (const std::string& input : inputs) {
        if (input.empty() || input.size() >= 8192) continue;
        for (const FormatDescriptor& row : formatRegistry()) {
            if (row.writesText) continue;
            int32_t length = 0;
            if (row.framer(input.data(), static_cast<int32_t>(input.size()), text.data(), 8191, &length) != kOk) continue;
            before = text;
            resetRecord(record.get());
            row.parser(text.data(), length, record.get(), &clock);
            ASSERT_TRUE(text == before) << "format " << row.formatId << " rewrote " << input.substr(0, 40);
        }
    }
}

// The driver skips a row whose check says it reads the text exactly as an earlier row
// of its framing and expectations does. Whenever the check says so, one such earlier
// row must indeed leave the same status and the same record, whether or not the input
// lets the row win; a later change of either reader shows up here.
TEST(DriverEquivalence, RowsSkippedAsReadingLikeAnEarlierOne) {
    std::vector<std::string> inputs = testing::sampleInputs();
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(ORVANE_SOURCE_DIR) / "tests" / "data")) {
        if (entry.is_regular_file() && entry.path().extension() != ".expected") inputs.push_back(testing::readBytes(entry.path()));
    }
    for (const auto& peer : testing::readPeerInputs(testing::peerFolder())) inputs.push_back(peer.bytes);
    // Licences whose header bytes the checks look at are altered: the separators, the
    // version and the entry count.
    for (const std::string& sample : testing::sampleInputs()) {
        if (sample.size() < 24 || sample[0] != '@') continue;
        for (size_t at : {size_t{1}, size_t{2}, size_t{3}, size_t{15}, size_t{16}, size_t{19}, size_t{20}}) {
            for (char c : {'-', '\x7f', 'A', '\r', '\n', ' ', '9'}) {
                std::string altered = sample;
                altered[at] = c;
                inputs.push_back(altered);
                // A dash that ends elements for one reader and not for the other.
                if (c == '-') std::replace(altered.begin() + 24, altered.end(), ' ', '-');
                if (c == '-') inputs.push_back(altered);
            }
        }
    }
    const ParseClock clock{2026, 11, 22, 12, 0, 0};
    const auto rows = formatRegistry();
    int32_t skipped = 0;
    for (const std::string& input : inputs) {
        if (input.empty()) continue;
        const int32_t capacity = std::max<int32_t>(8192, static_cast<int32_t>(input.size()));
        // The row's text as the plain driver frames it, read by the row's reader.
        auto read = [&](const FormatDescriptor& row, testing::RecordWithBuffer& record, std::string& text) {
            text.assign(static_cast<size_t>(capacity), '\0');
            int32_t length = 0;
            if (row.framer(input.data(), static_cast<int32_t>(input.size()), text.data(), capacity - 1, &length) != kOk) return -1;
            if (row.framer != framePassThrough) {
                for (int32_t i = 0; i < length; ++i) text[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[i])));
            }
            text.resize(static_cast<size_t>(length));
            return row.parser(text.data(), length, record.get(), &clock);
        };
        for (size_t r = 0; r < rows.size(); ++r) {
            if (rows[r].readsAsEarlierRow == nullptr) continue;
            testing::RecordWithBuffer later(capacity);
            std::string text;
            const int32_t status = read(rows[r], later, text);
            TextFacts facts;
            gatherTextFacts(text.data(), static_cast<int32_t>(text.size()), &facts);
            if (status == -1 || !rows[r].readsAsEarlierRow(facts)) continue;
            ++skipped;
            bool same = false;
            for (size_t e = 0; e < r && !same; ++e) {
                if (rows[e].framer != rows[r].framer || rows[e].expectedCountry != rows[r].expectedCountry ||
                    rows[e].expectedJurisdiction != rows[r].expectedJurisdiction) {
                    continue;
                }
                testing::RecordWithBuffer earlier(capacity);
                std::string earlierText;
                const int32_t earlierStatus = read(rows[e], earlier, earlierText);
                if (status != kOk || earlierStatus != kOk) {
                    same = status != kOk && earlierStatus != kOk;
                    continue;
                }
                same = later.record.workUsed == earlier.record.workUsed && later.buffer == earlier.buffer;
                for (FieldId id = 0; id < kFieldCount && same; ++id) {
                    const FieldSlot& a = later.record.fields[id];
                    const FieldSlot& b = earlier.record.fields[id];
                    same = a.length == b.length && (a.data == nullptr) == (b.data == nullptr) &&
                           (a.data == nullptr || a.data - later.buffer.data() == b.data - earlier.buffer.data());
                }
            }
            ASSERT_TRUE(same) << "format " << rows[r].formatId << " on " << input.substr(0, 40);
        }
    }
    EXPECT_GT(skipped, 0);
}

TEST(DriverEquivalence, PeerInputs) {
    const auto peers = testing::readPeerInputs(testing::peerFolder());
    if (peers.empty()) GTEST_SKIP() << "no peer inputs beside the project";
    for (const auto& peer : peers) {
        if (peer.bytes.empty()) continue;
        ASSERT_EQ(compare(peer.bytes), "") << peer.file << ": " << peer.name;
    }
}

}  // namespace
}  // namespace orvane
