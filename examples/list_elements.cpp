// Lists every raw element of a scanned document in document order, then the holder's
// age and whether the document has expired, with the handle owned by a unique_ptr.
//
//   c++ -std=c++17 list_elements.cpp $(pkg-config --cflags --libs orvane_parser) -o list_elements
//   ./list_elements scan.txt
#include <orvane_parser.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

namespace {

struct ParserDeleter {
    void operator()(SVT_ParserHandle* parser) const { SVT_delete(parser); }
};
using Parser = std::unique_ptr<SVT_ParserHandle, ParserDeleter>;

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FILE\n";
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    const std::string input(std::istreambuf_iterator<char>(in), {});
    Parser parser(SVT_create());
    if (!parser || SVT_parseLenient(parser.get(), input.data(), static_cast<int>(input.size())) != SVT_OK) {
        std::cout << "not recognised\n";
        return 1;
    }
    char name[128];
    SVT_getFormatName(parser.get(), name, sizeof name);
    int count = 0;
    SVT_getElementCount(parser.get(), &count);
    std::cout << name << ": " << count << " elements\n";
    for (int i = 0; i < count; ++i) {
        char id[64];
        char value[1024];
        if (SVT_getElementAt(parser.get(), i, id, sizeof id, value, sizeof value) == SVT_OK) {
            std::cout << "  " << id << " = " << value << '\n';
        }
    }
    int years = 0;
    if (SVT_getAge(parser.get(), &years) == SVT_OK) std::cout << "age: " << years << '\n';
    int expired = 0;
    if (SVT_isExpired(parser.get(), &expired) == SVT_OK) std::cout << (expired ? "expired\n" : "not expired\n");
    return 0;
}
