#include "aamva/engine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

// The element step a variant installs: Table C's loop over both separators.
int32_t elementStepTableC(AamvaParser& p, TextSpan data) {
    const char delimiters[] = {p.dataElementSeparator, p.segmentTerminator, '\0'};
    return p.elementLoop(p, data, delimiters, kAamvaTableC);
}

// The engine on a row, read with Table C; by default any version passes.
struct EngineRun {
    RecordWithBuffer r{1024};
    AamvaParser p{};
    int32_t status;
    explicit EngineRun(uint32_t format = 42, bool anyVersion = true) {
        status = initAamvaParser(p, format, r.get(), nullptr);
        p.elementStep = elementStepTableC;
        if (anyVersion) p.versionCheck = nullptr;
    }
    int32_t run(const std::string& payload) { return runAamvaParser(p, payload.data(), static_cast<int32_t>(payload.size())); }
    std::string slot(FieldId id) const { return slotText(r.record, id); }
};

// A 2014-style barcode: "@", LF, RS, CR, "ANSI ", IIN, version, jurisdiction version,
// number of entries, then the directory and the subfile.
std::string barcode2014(const std::string& version, const std::string& entries, const std::string& elements) {
    const std::string subfile = "DL" + elements + "\r";
    const std::string directory = "DL0031" + std::string(4 - std::to_string(subfile.size()).size(), '0') +
                                  std::to_string(subfile.size());
    return "@\n\x1e\rANSI 636026" + version + "01" + entries + directory + subfile;
}

std::vector<int32_t> fieldsFor(const AamvaElementTable& table, const char (&id)[4]) {
    std::vector<int32_t> ids;
    for (int32_t index = 0; index < table.count; ++index) {
        if (table.pairs[index].key == elementKey(id)) ids.push_back(table.pairs[index].value);
    }
    return ids;
}

TEST(AamvaTables, VersionRowsAndTheInitialiser) {
    const auto rows = aamvaVersionTable();
    ASSERT_EQ(rows.size(), 31u);
    for (uint32_t format = 17; format <= 47; ++format) {
        EXPECT_EQ(findAamvaVersionRow(format), &rows[format - 17]) << format;  // one row per format, in order
    }
    EXPECT_EQ(findAamvaVersionRow(16), nullptr);
    EXPECT_EQ(findAamvaVersionRow(48), nullptr);
    // The rows never used, since formats 45 and 46 run on the row of 42, stay as they are.
    EXPECT_EQ(rows[45 - 17].minVersion, 3u);
    EXPECT_EQ(rows[46 - 17].expectedVersion, 99u);

    EngineRun e(43, false);
    ASSERT_EQ(e.status, kOk);
    EXPECT_EQ(e.p.row.minVersion, 7u);
    EXPECT_EQ(e.p.row.entriesOffset, 18u);
    AamvaParser unknown{};
    unknown.elementStep = elementStepTableC;
    EXPECT_EQ(initAamvaParser(unknown, 16, e.r.get(), nullptr), kErrUnknownFormat);
    EXPECT_EQ(unknown.mainStep, nullptr);
    EXPECT_EQ(unknown.elementStep, nullptr);  // cleared before the lookup
}

TEST(AamvaTables, ElementCountsAndRepeats) {
    EXPECT_EQ(kAamvaTableA.count, 51);
    EXPECT_EQ(kAamvaTableB.count, 36);
    EXPECT_EQ(kAamvaTableC.count, 68);
    EXPECT_EQ(kAamvaTableD.count, 82);
    EXPECT_EQ(kAamvaTableE.count, 48);
    // The variants show most repeats at work; these are the ones they do not reach.
    EXPECT_EQ(fieldsFor(kAamvaTableC, "DBB"), (std::vector<int32_t>{78, 11}));
    EXPECT_EQ(fieldsFor(kAamvaTableA, "DBS"), (std::vector<int32_t>{51}));
    EXPECT_EQ(fieldsFor(kAamvaTableC, "DDL"), (std::vector<int32_t>{126}));
    EXPECT_EQ(kAamvaTableE.pairs[47].key, elementKey("DDJ"));
    EXPECT_EQ(kAamvaTableB.pairs[35].key, elementKey("DAA"));
}

// The header refusals of the default steps, and steps removed, show through the
// variants; the main step's own argument checks and an empty main step do not.
TEST(AamvaEngine, MainStepArgumentsAndAnEmptySlot) {
    EngineRun e;
    EXPECT_EQ(runAamvaParser(e.p, nullptr, 5), kErrInvalidArgument);
    EXPECT_EQ(runAamvaParser(e.p, "@", -1), kErrInvalidArgument);
    e.p.mainStep = nullptr;
    EXPECT_EQ(runAamvaParser(e.p, "x", 1), kOk);
}

TEST(AamvaEngine, NumericHeaderFieldsReadLikeStrtol) {
    EngineRun e;
    ASSERT_EQ(e.run(barcode2014(" 9", "00", "DAQX")), kOk);
    EXPECT_EQ(e.p.version, 9);
    EXPECT_EQ(e.p.entryCount, 1);  // "00" is one entry
    EngineRun signs;
    ASSERT_EQ(signs.run(barcode2014("-3", "+2", "DAQX")), kOk);
    EXPECT_EQ(signs.p.version, -3);
    EXPECT_EQ(signs.p.entryCount, 2);
}

TEST(AamvaEngine, ElementTokensAndTheStore) {
    EngineRun e;
    // An id alone clears its slot, one character after it is a value, two bytes are ignored.
    ASSERT_EQ(e.run(barcode2014("08", "01", "DCSSAMPLE\nDCS\nDAJX\nDA\nDAC  JO \x0b")), kOk);
    EXPECT_EQ(fieldMissing(e.r.get(), field::lastName), -1);
    EXPECT_EQ(e.slot(field::jurisdictionCode), "X");
    EXPECT_EQ(e.slot(field::firstName), "JO");
    aamvaElementStore(e.p, field::city, TextSpan{"\0 \tPHOENIX \r\0", 13});
    EXPECT_EQ(e.slot(field::city), "PHOENIX");
}

TEST(AamvaEngine, DocumentTypeFromTheDirectoryOrDefault) {
    EngineRun id;
    ASSERT_EQ(id.run(barcode2014("08", "01", "DAQX").replace(21, 2, "ID")), kOk);
    EXPECT_EQ(id.slot(field::documentType), "ID");
    // No directory record says DL or ID: the main step still answers DL.
    EngineRun none;
    none.p.directoryReader = nullptr;
    none.p.subfileSelector = nullptr;
    ASSERT_EQ(none.run(barcode2014("08", "01", "DAQX").replace(21, 2, "ZZ")), kOk);
    EXPECT_EQ(none.slot(field::documentType), "DL");
}

TEST(AamvaEngine, DirectoryLocatorSkipsForeignRecords) {
    EngineRun e;
    e.p.position = 2;
    TextSpan directory{};
    const std::string payload = "@@ZA00100020JU00000000DL00000000XYZ";
    struct Case {
        int32_t entries;
        int32_t start;
    };
    for (const Case c : {Case{3, 22}, Case{2, 22}, Case{1, 12}, Case{0, 2}}) {
        SCOPED_TRACE(c.entries);
        e.p.entryCount = c.entries;
        ASSERT_EQ(aamvaDirectoryLocator(e.p, testing::span(payload), &directory), kOk);
        EXPECT_EQ(directory.data - payload.data(), c.start);
        EXPECT_EQ(directory.length, static_cast<int32_t>(payload.size()) - c.start);
    }
    e.p.entryCount = 5;
    e.p.position = 30;  // fewer than 10 bytes left: the rest is the directory
    ASSERT_EQ(aamvaDirectoryLocator(e.p, testing::span(payload), &directory), kOk);
    EXPECT_EQ(directory.length, 5);
}

TEST(AamvaEngine, DirectoryReaderFindsTheSubfile) {
    struct Case {
        const char* name;
        std::string payload;
        std::string directory;
        int32_t status;
        int32_t offset;
    };
    const Case cases[] = {
        {"digits, type and letters", "@HDRDL00310020DLDAQX", "DL00310020DLDAQX", kOk, 16},
        {"offset from the directory, DLDAA searched", "@HEADER..DLDAAJOHN", "DL0030", kOk, 11},
        {"offset from the directory, no DLDAA", "@HEADER..QQDAAJOHN", "DL0005", kOk, 5},
        {"digit at the offset moves one forward", "@HEAD7XDAQ", "DL0005", kOk, 6},
        {"digit two back moves one back", "@HE9DXDAQ", "DL0005", kOk, 4},
        {"directory too short", "@HEADER", "DL00", kErrDirectory, 0},
        {"offset not numeric", "@HEADER", "DL00X1", kErrDirectory, 0},
        {"offset beyond the payload", "@HEADER", "DL0099", kErrDirectory, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EngineRun e;
        SubfileEntry entry{};
        ASSERT_EQ(aamvaDirectoryReader(e.p, testing::span(c.payload), testing::span(c.directory), &entry), c.status);
        if (c.status != kOk) continue;
        EXPECT_EQ(entry.type, 1);
        EXPECT_EQ(entry.offset, c.offset);
        EXPECT_EQ(entry.length, static_cast<int32_t>(c.payload.size()) - c.offset);
    }
}

TEST(AamvaEngine, SubfileSelectorDropsTypeAndL) {
    struct Case {
        const char* payload;
        int32_t offset;
        int32_t length;
        int32_t status;
        const char* data;
    };
    const Case cases[] = {
        {"DLDAQX", 0, 6, kOk, "DAQX"},   {"IDDAQX", 0, 6, kOk, "DAQX"}, {"DLLDAQX", 0, 7, kOk, "DAQX"},
        {"LDAQX", 0, 5, kOk, "DAQX"},    {"DL", 0, 2, kOk, ""},          {"..DAQX", 2, 4, kOk, "DAQX"},
        {"DAQ", 1, 3, kErrInvalidArgument, ""}, {"DAQ", -1, 2, kErrInvalidArgument, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.payload);
        EngineRun e;
        const SubfileEntry entry{1, c.offset, c.length};
        TextSpan data{};
        ASSERT_EQ(aamvaSubfileSelector(e.p, makeSpan(c.payload), &entry, &data), c.status);
        if (c.status == kOk) {
            EXPECT_EQ(testing::text(data), c.data);
        }
    }
}

}  // namespace
}  // namespace orvane
