// Helpers shared by the unit tests.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "api/handle.h"
#include "engine/record.h"

namespace orvane::testing {

// A record attached to a work buffer of the given size.
struct RecordWithBuffer {
    explicit RecordWithBuffer(int32_t capacity = 8192) : buffer(static_cast<size_t>(capacity)) {
        std::memset(&record, 0, sizeof record);
        attachWorkBuffer(&record, buffer.data(), capacity);
    }
    std::vector<char> buffer;
    ParsedRecord record;
    ParsedRecord* get() { return &record; }
};

inline std::string text(TextSpan span) {
    if (span.data == nullptr || span.length < 1) return std::string();
    return std::string(span.data, static_cast<size_t>(span.length));
}

inline std::string slotText(const ParsedRecord& record, FieldId id) {
    return text(record.fields[id]);
}

inline TextSpan span(const std::string& s) {
    return TextSpan{s.data(), static_cast<int32_t>(s.size())};
}

struct HandleDeleter {
    void operator()(SVT_ParserHandle* h) const { SVT_delete(h); }
};
using HandlePtr = std::unique_ptr<SVT_ParserHandle, HandleDeleter>;

// A handle after one parse, with its record reset: ready to be filled by hand.
inline HandlePtr parsedHandle() {
    HandlePtr h(SVT_create());
    const char input[] = "XYZ";
    SVT_parse(h.get(), input, 3);
    resetRecord(&h->record);
    return h;
}

using Worker = int32_t (*)(const ParsedRecord*, char*, int32_t);

struct Slot {
    FieldId id;
    const char* value;
};

// Runs a worker on a fresh record holding the slots; the answer text, or "#<status>".
inline std::string ask(Worker worker, const std::vector<Slot>& slots, int32_t capacity = 64) {
    RecordWithBuffer r;
    for (const Slot& s : slots) setFieldLiteral(r.get(), s.id, s.value);
    std::vector<char> buffer(static_cast<size_t>(capacity > 0 ? capacity : 1), '#');
    const int32_t status = worker(r.get(), buffer.data(), capacity);
    if (status != 0) return "#" + std::to_string(status);
    return std::string(buffer.data(), strnlen(buffer.data(), buffer.size()));
}

// A table row for ask: what the worker must answer for these slots and capacity.
struct WorkerCase {
    const char* name;
    Worker worker;
    std::vector<Slot> slots;
    int32_t capacity;
    std::string expected;
};

inline void runWorkerCases(const std::vector<WorkerCase>& cases) {
    for (const WorkerCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ask(c.worker, c.slots, c.capacity), c.expected);
    }
}

// A table row for a format reader: the status it must answer for the input and the
// slots it must leave as given ("" for an empty slot).
struct ReaderCase {
    const char* name;
    FormatParser reader;
    std::string input;
    int32_t status;
    std::vector<Slot> slots = {};  // none: the status alone is checked
    int32_t workCapacity = 4096;
};

// Runs each reader on its own copy of the input, since readers may rewrite it.
inline void runReaderCases(const std::vector<ReaderCase>& cases, const ParseClock* clock = nullptr) {
    for (const ReaderCase& c : cases) {
        SCOPED_TRACE(c.name);
        RecordWithBuffer r(c.workCapacity);
        std::string text = c.input;
        EXPECT_EQ(c.reader(text.data(), static_cast<int32_t>(text.size()), r.get(), clock), c.status);
        for (const Slot& slot : c.slots) {
            SCOPED_TRACE(slot.id);
            EXPECT_EQ(slotText(r.record, slot.id), slot.value);
        }
    }
}

}  // namespace orvane::testing
