#include "fields/physical.h"

#include <gtest/gtest.h>

#include <cstring>

#include "engine/status.h"
#include "fields/color_tables.h"
#include "fields/weight_ranges.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;

TEST(PhysicalTables, ColoursAndWeightRanges) {
    ASSERT_EQ(eyeColorTable().size(), 16u);
    ASSERT_EQ(hairColorTable().size(), 17u);
    EXPECT_STREQ(hairColorTable()[5].name, "Red/Auburn");
    for (const auto& table : {eyeColorTable(), hairColorTable()}) {
        for (const ColorRow& row : table) EXPECT_EQ(row.codeLength, std::strlen(row.code)) << row.code;
    }
    EXPECT_STREQ(eyeColorName(TextSpan{"BLUE", 2}), "Blue");  // only the span's own characters count
    EXPECT_STREQ(weightRangeKilograms(0), "up to 31");
    EXPECT_STREQ(weightRangePounds(8), "281-310");
    EXPECT_STREQ(weightRangePounds(9), "320+");  // the gap is part of the table
    EXPECT_EQ(weightRangeKilograms(10), nullptr);
    EXPECT_EQ(weightRangePounds(-1), nullptr);
}

TEST(Physical, ColoursAndRace) {
    testing::runWorkerCases({
        {"eye BRO", getEyeColor, {{field::eyeColor, "BRO"}}, 64, "Brown"},
        {"eye lower case stays", getEyeColor, {{field::eyeColor, "bro"}}, 64, "bro"},
        {"eye VI", getEyeColor, {{field::eyeColor, "VI"}}, 64, "Viole"},
        {"eye GRY", getEyeColor, {{field::eyeColor, "GRY"}}, 64, "Gray"},
        {"hair GRY", getHairColor, {{field::hairColor, "GRY"}}, 64, "Grey"},
        {"eye unknown code untrimmed", getEyeColor, {{field::eyeColor, " XY "}}, 64, " XY "},
        {"eye four characters", getEyeColor, {{field::eyeColor, "BROW"}}, 64, "BROW"},
        {"eye hair-only code", getEyeColor, {{field::eyeColor, "BD"}}, 64, "BD"},
        {"hair eye-only code", getHairColor, {{field::hairColor, "VI"}}, 64, "VI"},
        {"race trimmed", getRace, {{field::race, " \tW\x01H ~"}}, 64, "W H"},
        {"race blank", getRace, {{field::race, "   "}}, 64, "#-26"},
    });
}

TEST(Physical, Gender) {
    testing::runWorkerCases({
        {"1", getGender, {{field::gender, "1"}}, 64, "Male"},
        {"begins with M", getGender, {{field::gender, "MX"}}, 64, "Male"},
        {"2", getGender, {{field::gender, "2"}}, 64, "Female"},
        {"F", getGender, {{field::gender, "F"}}, 64, "Female"},
        {"X", getGender, {{field::gender, "X"}}, 64, "#-26"},
        {"male lower case", getGender, {{field::gender, "male"}}, 64, "#-26"},
        {"blank first", getGender, {{field::gender, " M"}}, 64, "#-26"},
        // The whole word or nothing.
        {"male in 5", getGender, {{field::gender, "M"}}, 5, "Male"},
        {"male in 4", getGender, {{field::gender, "M"}}, 4, "#-18"},
        {"female in 6", getGender, {{field::gender, "F"}}, 6, "#-18"},
        {"female in 7", getGender, {{field::gender, "F"}}, 7, "Female"},
        {"unknown before size", getGender, {{field::gender, "X"}}, 2, "#-26"},
    });
    RecordWithBuffer r;
    int32_t code = 7;
    EXPECT_EQ(genderCode(r.get(), &code), kErrNoAnswer);
    setFieldLiteral(r.get(), field::gender, "FEMALE");
    ASSERT_EQ(genderCode(r.get(), &code), kOk);
    EXPECT_EQ(code, kGenderFemale);
}

TEST(Physical, Height) {
    testing::runWorkerCases({
        {"feet and inches", getHeight, {{field::height, " 511 "}}, 64, "5'11\""},
        {"one digit", getHeight, {{field::height, "6"}}, 64, "6'\""},  // deliberately not filled out
        {"exact room", getHeight, {{field::height, "510"}}, 6, "5'10\""},
        {"one short", getHeight, {{field::height, "510"}}, 5, "#-18"},
        {"only blanks", getHeight, {{field::height, "  "}, {field::heightCentimeters, "175"}}, 64, "#-26"},
        {"centimetres exact", getHeight, {{field::heightCentimeters, "175"}}, 6, "175cm"},
        {"centimetres short", getHeight, {{field::heightCentimeters, "175"}}, 5, "#-18"},
        {"centimetres blank", getHeight, {{field::heightCentimeters, " "}}, 64, "#-18"},
        {"ready text wins", getHeight,
         {{field::height, "510"}, {field::heightCentimeters, "175"}, {field::heightAlt, " 5' 10\" "}},
         64, "5' 10\""},
        {"ready text blank", getHeight, {{field::heightAlt, " "}, {field::height, "510"}}, 64, "#-26"},
        {"feet before centimetres", getHeight, {{field::height, "510"}, {field::heightCentimeters, "175"}},
         64, "5'10\""},
    });
}

TEST(Physical, WeightInKilograms) {
    testing::runWorkerCases({
        {"from pounds", getWeightKG, {{field::weightPounds, "180"}}, 64, "82"},
        {"rounds half up", getWeightKG, {{field::weightPounds, "1"}}, 64, "0"},
        {"two pounds", getWeightKG, {{field::weightPounds, "2"}}, 64, "1"},
        {"seven digits", getWeightKG, {{field::weightPounds, "9999999"}}, 64, "4545454"},
        {"eight digits skipped", getWeightKG,
         {{field::weightPounds, "12345678"}, {field::weightKilograms, "70"}}, 64, "70"},
        {"not digits skipped", getWeightKG, {{field::weightPounds, "180LB"}, {field::weightRange, "3"}}, 64,
         "60-70"},
        {"fills exactly, no terminator", getWeightKG, {{field::weightPounds, "2200"}}, 4, "1000"},
        {"does not fit, empty text", getWeightKG, {{field::weightPounds, "22000"}}, 4, ""},
        {"stored kilograms", getWeightKG, {{field::weightKilograms, "70.5"}}, 64, "70.5"},
        {"kilograms of 8 skipped", getWeightKG, {{field::weightKilograms, "12345.67"}, {field::weightRange, "0"}},
         64, "up to 31"},
        {"kilograms with comma skipped", getWeightKG, {{field::weightKilograms, "70,5"}}, 64, "#-26"},
        {"range 9", getWeightKG, {{field::weightRange, "9"}}, 64, "146+"},
        {"range with text", getWeightKG, {{field::weightRange, "4 LBS"}}, 64, "71-86"},
        {"range 12", getWeightKG, {{field::weightRange, "12"}}, 64, "#-26"},
        {"range blank first", getWeightKG, {{field::weightRange, " 3"}}, 64, "#-26"},
        {"range huge", getWeightKG, {{field::weightRange, "99999999999999999999999"}}, 64, "#-26"},
        {"capacity 3", getWeightKG, {{field::weightPounds, "180"}}, 3, "#-21"},
    });
}

TEST(Physical, WeightInPounds) {
    testing::runWorkerCases({
        {"stored pounds, any text", getWeightLBS, {{field::weightPounds, "180 LB"}}, 64, "180 LB"},
        {"nine characters", getWeightLBS, {{field::weightPounds, "123456789"}}, 64, "123456789"},
        {"ten skipped", getWeightLBS, {{field::weightPounds, "1234567890"}, {field::weightKilograms, "70"}}, 64,
         "154"},
        {"from one kilogram", getWeightLBS, {{field::weightKilograms, "1"}}, 64, "2"},
        {"seven digits", getWeightLBS, {{field::weightKilograms, "9999999"}}, 64, "21999998"},
        {"point falls through", getWeightLBS, {{field::weightKilograms, "70.5"}, {field::weightRange, "3"}}, 64,
         "131-160"},
        {"fills exactly", getWeightLBS, {{field::weightKilograms, "500"}}, 4, "1100"},
        {"does not fit", getWeightLBS, {{field::weightKilograms, "5000"}}, 4, ""},
        {"range 9", getWeightLBS, {{field::weightRange, "9"}}, 64, "320+"},
        {"capacity 3", getWeightLBS, {{field::weightPounds, "180"}}, 3, "#-21"},
    });
}

}  // namespace
}  // namespace orvane
