#include "plain_driver.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <vector>

#include "aamva/engine.h"
#include "engine/driver.h"
#include "engine/framers.h"
#include "engine/status.h"
#include "fields/countries.h"
#include "fields/names.h"

namespace orvane::testing {
namespace {

void clearWholeRecord(ParsedRecord* record) {
    resetRecord(record);
    std::memset(record->fields, 0, sizeof record->fields);
    std::memset(record->workBuffer, 0, static_cast<size_t>(record->workCapacity));
}

int32_t countUsableSlots(const ParsedRecord* record) {
    int32_t filled = 0;
    for (const FieldSlot& slot : record->fields) filled += spanUsable(slot) ? 1 : 0;
    return filled;
}

int32_t runPlainRow(const FormatDescriptor& row, const std::string& input, char* scratch, int32_t capacity,
                    ParsedRecord* record, const ParseClock* clock, int32_t* length, bool* framed) {
    *length = 0;
    *framed = row.framer(input.data(), static_cast<int32_t>(input.size()), scratch, capacity - 1, length) == kOk;
    if (!*framed) return -1;
    if (row.framer != framePassThrough) {
        for (int32_t i = 0; i < *length; ++i) {
            scratch[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(scratch[i])));
        }
    }
    clearWholeRecord(record);
    return row.parser(scratch, *length, record, clock);
}

int32_t plainScore(const FormatDescriptor& row, const ParsedRecord* record, char* scratch, int32_t room) {
    int32_t score = countUsableSlots(record);
    if (row.expectedCountry != nullptr) {
        if (getCountryCode(record, scratch, room) == kOk) score += std::strcmp(scratch, row.expectedCountry) == 0 ? 100 : -1000;
        if (getFirstName(record, scratch, room) != kOk) score -= 100;
    }
    if (row.expectedJurisdiction != nullptr) {
        if (getJurisdictionCode(record, scratch, room) == kOk) {
            score += std::strcmp(scratch, row.expectedJurisdiction) == 0 ? 50 : -500;
        }
        if (getFirstName(record, scratch, room) != kOk || getLastName(record, scratch, room) != kOk) score -= 50;
    }
    return score;
}

std::string compareRecords(const ParsedRecord& plain, const ParsedRecord& fast) {
    if (plain.formatGroup != fast.formatGroup || plain.formatId != fast.formatId) return "format";
    if (plain.workUsed != fast.workUsed) return "work used";
    if (std::memcmp(plain.workBuffer, fast.workBuffer, static_cast<size_t>(plain.workCapacity)) != 0) {
        return "work buffer bytes";
    }
    for (FieldId id = 0; id < kFieldCount; ++id) {
        const FieldSlot& a = plain.fields[id];
        const FieldSlot& b = fast.fields[id];
        const bool sameEmptiness = (a.data == nullptr) == (b.data == nullptr);
        const bool samePlace = a.data == nullptr || (a.data - plain.workBuffer == b.data - fast.workBuffer);
        if (!sameEmptiness || !samePlace || a.length != b.length) return "slot " + std::to_string(id);
    }
    return "";
}

}  // namespace

int32_t plainParseBestFormat(std::span<const FormatDescriptor> rows, const std::string& input, char* scratch,
                             int32_t capacity, ParsedRecord* record, const ParseClock* clock) {
    const int32_t room = capacity - 1;
    int32_t best = -1;
    int32_t bestScore = -9999;
    int32_t length = 0;
    bool framed = false;
    for (size_t r = 0; r < rows.size(); ++r) {
        if (runPlainRow(rows[r], input, scratch, capacity, record, clock, &length, &framed) != kOk) continue;
        if (countUsableSlots(record) == 0) continue;
        const int32_t score = plainScore(rows[r], record, scratch, room);
        if (score > bestScore) {
            best = static_cast<int32_t>(r);
            bestScore = score;
        }
    }
    if (best < 0) return kErrNotRecognised;
    const FormatDescriptor& winner = rows[static_cast<size_t>(best)];
    const int32_t status = runPlainRow(winner, input, scratch, capacity, record, clock, &length, &framed);
    if (status != kOk) return status;
    TextSpan version;
    if (findAamvaHeader(scratch, length, &version) == kOk) setField(record, field::aamvaVersion, version);
    record->formatGroup = winner.formatGroup;
    record->formatId = winner.formatId;
    sanitizeWorkBuffer(record);
    return kOk;
}

std::string compareDrivers(const std::string& input, std::span<const FormatDescriptor> rows) {
    if (input.empty()) return "";  // the C interface refuses it before either driver runs
    const int32_t capacity = std::max<int32_t>(8192, static_cast<int32_t>(input.size()));
    const ParseClock clock{2026, 11, 22, 12, 0, 0};
    std::vector<char> plainWork(static_cast<size_t>(capacity)), fastWork(static_cast<size_t>(capacity));
    std::vector<char> plainScratch(static_cast<size_t>(capacity)), fastScratch(static_cast<size_t>(capacity));
    std::vector<char> framings(2 * static_cast<size_t>(capacity));
    ParsedRecord plain{};
    ParsedRecord fast{};
    attachWorkBuffer(&plain, plainWork.data(), capacity);
    attachWorkBuffer(&fast, fastWork.data(), capacity);
    const int32_t plainStatus = plainParseBestFormat(rows, input, plainScratch.data(), capacity, &plain, &clock);
    const ParseBuffers buffers{fastScratch.data(), capacity, framings.data()};
    const int32_t fastStatus = parseBestFormatOf(rows, input.data(), static_cast<int32_t>(input.size()), buffers, &fast,
                                                 &clock);
    if (plainStatus != fastStatus) return "status " + std::to_string(plainStatus) + " / " + std::to_string(fastStatus);
    // The rule a won parse keeps must be the one its record would derive.
    if (fastStatus == kOk && fast.nameRule.rule != nameRuleFor(&plain)) return "kept name rule";
    return compareRecords(plain, fast);
}

}  // namespace orvane::testing
