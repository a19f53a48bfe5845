#include "documents/zone_fields.h"

#include <cstring>
#include <span>

#include "documents/mrz_check_digits.h"

namespace orvane {
namespace {

struct ZoneField {
    const char* name;
    int32_t from;
    int32_t length;
};

constexpr ZoneField kPassportFields[] = {
    {"documentCode", 0, 2},   {"issuingState", 2, 3}, {"names", 5, 39},       {"documentNumber", 44, 9},
    {"nationality", 54, 3},   {"birthDate", 57, 6},   {"sex", 64, 1},         {"expiryDate", 65, 6},
    {"optionalData1", 72, 14},
};
constexpr ZoneField kLongVisaFields[] = {
    {"documentCode", 0, 2},   {"issuingState", 2, 3}, {"names", 5, 39},       {"documentNumber", 44, 9},
    {"nationality", 54, 3},   {"birthDate", 57, 6},   {"sex", 64, 1},         {"expiryDate", 65, 6},
    {"optionalData1", 72, 16},
};
constexpr ZoneField kTwoLineCardFields[] = {
    {"documentCode", 0, 2},   {"issuingState", 2, 3}, {"names", 5, 31},       {"documentNumber", 36, 9},
    {"nationality", 46, 3},   {"birthDate", 49, 6},   {"sex", 56, 1},         {"expiryDate", 57, 6},
    {"optionalData1", 64, 7},
};
constexpr ZoneField kShortVisaFields[] = {
    {"documentCode", 0, 2},   {"issuingState", 2, 3}, {"names", 5, 31},       {"documentNumber", 36, 9},
    {"nationality", 46, 3},   {"birthDate", 49, 6},   {"sex", 56, 1},         {"expiryDate", 57, 6},
    {"optionalData1", 64, 8},
};
constexpr ZoneField kThreeLineCardFields[] = {
    {"documentCode", 0, 2},   {"issuingState", 2, 3}, {"documentNumber", 5, 9}, {"optionalData1", 15, 15},
    {"birthDate", 30, 6},     {"sex", 37, 1},         {"expiryDate", 38, 6},    {"nationality", 45, 3},
    {"optionalData2", 48, 11}, {"names", 60, 30},
};

std::span<const ZoneField> fieldsOf(MrzLayout layout) {
    switch (layout) {
        case MrzLayout::Td3: return kPassportFields;
        case MrzLayout::VisaLong: return kLongVisaFields;
        case MrzLayout::Td2: return kTwoLineCardFields;
        case MrzLayout::VisaShort: return kShortVisaFields;
        case MrzLayout::Td1: return kThreeLineCardFields;
        case MrzLayout::None: break;
    }
    return {};
}

TextSpan withoutFillers(TextSpan value) {
    while (value.length > 0 && value.data[0] == '<') spanSkip(&value, 1);
    while (value.length > 0 && value.data[value.length - 1] == '<') --value.length;
    return value;
}

// Where a three-line card's number continues: after the "<" that stands for its check
// digit, up to the next filler; the last character there is the number's check digit.
int32_t numberExtensionEnd(TextSpan zone) {
    if (zone.data[14] != '<' || zone.data[15] == '<') return 15;
    int32_t end = 15;
    while (end < 30 && zone.data[end] != '<') ++end;
    return end;
}

}  // namespace

void visitZoneElements(TextSpan zone, ElementVisitor visit, void* context) {
    if (!spanUsable(zone) || visit == nullptr) return;
    const MrzLayout layout = zoneLayoutOf(zone.data, zone.length);
    const int32_t extensionEnd = layout == MrzLayout::Td1 ? numberExtensionEnd(zone) : 15;
    for (const ZoneField& field : fieldsOf(layout)) {
        TextSpan value{zone.data + field.from, field.length};
        char number[24];
        if (layout == MrzLayout::Td1 && extensionEnd > 15 && field.from == 5) {
            const int32_t more = extensionEnd - 1 - 15;
            std::memcpy(number, zone.data + 5, 9);
            std::memcpy(number + 9, zone.data + 15, static_cast<size_t>(more));
            value = TextSpan{number, 9 + more};
        } else if (layout == MrzLayout::Td1 && field.from == 15) {
            value = TextSpan{zone.data + extensionEnd, 30 - extensionEnd};
        }
        if (!visit(context, makeSpan(field.name), withoutFillers(value))) return;
    }
}

}  // namespace orvane
