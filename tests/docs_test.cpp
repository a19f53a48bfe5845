// The pages of docs/ that list what the library holds, checked against it: the format
// table is generated from the registry and the names (ORVANE_REWRITE_DOCS=1 rewrites it),
// and every repair and every member of the JSON object must be described.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "engine/format_names.h"
#include "engine/registry.h"
#include "engine/repairs.h"
#include "orvane_parser.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

fs::path docsPath(const char* page) { return fs::path(ORVANE_SOURCE_DIR) / "docs" / page; }

const char* familyName(uint32_t group) {
    switch (group) {
        case kGroupAamva: return "AAMVA barcode";
        case kGroupStripe: return "magnetic stripe";
        case kGroupRegional: return "HC card";
        case kGroupCommonAccessCard: return "military ID";
        case kGroupNational: return "national document";
        case kGroupMrz: return "machine-readable zone";
        default: return "?";
    }
}

// The table of formats, by number: the strict rows, then the rows only the lenient parse tries.
std::string formatTable() {
    std::vector<const FormatDescriptor*> rows;
    for (const FormatDescriptor& row : lenientRegistry()) rows.push_back(&row);
    std::stable_sort(rows.begin(), rows.end(),
                     [](const FormatDescriptor* a, const FormatDescriptor* b) { return a->formatId < b->formatId; });
    const size_t strict = formatRegistry().size();
    std::string table = "| number | family | name | parse |\n|---:|---|---|---|\n";
    for (const FormatDescriptor* row : rows) {
        const FormatName* name = findFormatName(row->formatId);
        const bool lenientOnly = static_cast<size_t>(row - lenientRegistry().data()) >= strict;
        table += "| " + std::to_string(row->formatId) + " | " + std::to_string(row->formatGroup) + " " +
                 familyName(row->formatGroup) + " | " + (name != nullptr ? name->name : "(no name)") + " | " +
                 (lenientOnly ? "lenient only" : "both") + " |\n";
    }
    return table;
}

TEST(Docs, FormatTableIsTheRegistrys) {
    std::set<uint32_t> numbers;
    std::set<std::string> names;
    for (const FormatDescriptor& row : lenientRegistry()) {
        SCOPED_TRACE(row.formatId);
        EXPECT_TRUE(numbers.insert(row.formatId).second) << "a number twice";
        const FormatName* name = findFormatName(row.formatId);
        ASSERT_NE(name, nullptr) << "a row without a name";
        EXPECT_TRUE(names.insert(name->name).second) << "a name twice";
        EXPECT_TRUE(name->edition == nullptr || row.formatGroup == kGroupAamva);
    }
    for (const FormatName& name : formatNames()) EXPECT_EQ(numbers.count(name.formatId), 1u) << name.name;
    for (size_t i = formatRegistry().size(); i < lenientRegistry().size(); ++i) {
        EXPECT_GE(lenientRegistry()[i].formatId, 100u) << "rows only the lenient parse tries are numbered from 100";
    }

    const fs::path page = docsPath("formats.md");
    const std::string text = testing::readBytes(page);
    const std::string begin = "<!-- generated from the registry: begin -->\n";
    const std::string end = "<!-- generated from the registry: end -->";
    const size_t from = text.find(begin);
    const size_t to = text.find(end);
    ASSERT_TRUE(from != std::string::npos && to != std::string::npos && from < to) << page;
    const std::string table = formatTable();
    const std::string written = text.substr(from + begin.size(), to - from - begin.size());
    const char* rewrite = std::getenv("ORVANE_REWRITE_DOCS");
    if (written != table && rewrite != nullptr && std::string(rewrite) == "1") {
        std::ofstream(page, std::ios::binary) << text.substr(0, from + begin.size()) + table + text.substr(to);
        GTEST_SKIP() << "rewrote " << page;
    }
    EXPECT_EQ(written, table) << "run the unit tests with ORVANE_REWRITE_DOCS=1 to rewrite " << page;
}

// The pages that count the formats, as they count them.
TEST(Docs, FormatCountsAreTheRegistrys) {
    const std::string counts = std::to_string(formatRegistry().size()) + " of them, and " +
                               std::to_string(lenientRegistry().size() - formatRegistry().size()) + " more";
    for (const char* page : {"README.md", "js/README.md"}) {
        std::string text = testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / page);
        std::replace(text.begin(), text.end(), '\n', ' ');  // a count may wrap
        EXPECT_NE(text.find("(" + counts), std::string::npos) << page << " should say (" << counts;
    }
}

TEST(Docs, EveryRepairIsDescribed) {
    const std::string page = testing::readBytes(docsPath("lenient.md"));
    for (const Repair& repair : repairTable()) {
        EXPECT_NE(page.find("`" + std::string(repair.name) + "`"), std::string::npos) << repair.name;
    }
}

// The member names of a JSON object's top level, in order, read from the library's own output.
std::vector<std::string> topLevelMembers(const std::string& json) {
    std::vector<std::string> members;
    int depth = 0;
    bool inString = false;
    std::string current;
    for (size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (inString) {
            if (c == '\\') {
                current += json[++i];
            } else if (c == '"') {
                inString = false;
                if (depth == 1 && i + 1 < json.size() && json[i + 1] == ':') members.push_back(current);
            } else {
                current += c;
            }
        } else if (c == '"') {
            inString = true;
            current.clear();
        } else if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return members;
}

// Described in the page's table of members, in the order the object writes them.
TEST(Docs, EveryMemberOfTheJsonObjectIsDescribed) {
    const std::string page = testing::readBytes(docsPath("json.md"));
    const size_t from = page.find("## Members");
    ASSERT_NE(from, std::string::npos);
    const std::string table = page.substr(from, page.find("Written by `orvane-parse` only", from) - from);
    testing::HandlePtr handle(SVT_create());
    std::vector<char> buffer(1 << 16);
    std::set<std::string> members;
    for (const auto& path : testing::samplePaths()) {
        const std::string input = testing::readBytes(path);
        SVT_parse(handle.get(), input.data(), static_cast<int>(input.size()));
        int length = 0;
        ASSERT_EQ(SVT_getResultJson(handle.get(), buffer.data(), static_cast<int>(buffer.size()), &length), SVT_OK);
        size_t previous = 0;
        for (const std::string& member : topLevelMembers(buffer.data())) {
            members.insert(member);
            const size_t at = table.find("`" + member + "`");
            EXPECT_NE(at, std::string::npos) << member;
            if (at == std::string::npos) continue;
            EXPECT_GT(at, previous) << member << " is listed before the member written ahead of it in " << path;
            previous = at;
        }
    }
    EXPECT_GT(members.size(), 40u);
}

}  // namespace
}  // namespace orvane
