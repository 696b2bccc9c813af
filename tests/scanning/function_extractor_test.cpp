// SPDX-License-Identifier: MIT
#include "scanning/function_extractor.h"

#include <gtest/gtest.h>

#include "functions/functions_of_values.h"
#include "scanning/words/localizer.h"
#include "vemo/context.h"

namespace vemo::test {
namespace {

// Finds nothing, and tells how much it has looked through.
class Reader : public Extractor {
public:
    std::u16string_view name() const override { return u"Reader"; }
    void extract(const std::u16string& text, Context&, std::vector<Extraction>&) const override {
        units += text.size();
    }
    mutable std::size_t units = 0;
};

// A name that ends in a digit has the number after it looked for apart, and each number of the line only once.
TEST(FunctionExtractor, looksThroughALineOnce) {
    StringRangeDetector detector;
    FunctionManager functions(detector);
    functions.add(u"log2", {u"log2"}, greatestDivisor());
    const UnitManager units(detector);
    const auto reader = std::make_shared<Reader>();
    const FunctionExtractor extractor(functions, units, Localizer(), LocaleInfo::forIdentifier("en_US"), {reader});
    std::u16string line;
    for (int i = 0; i < 500; ++i) line += u"log2 1 ";
    Context context;
    std::vector<Extraction> found;
    extractor.extract(line, context, found);
    EXPECT_EQ(found.size(), 500u);
    EXPECT_LE(reader->units, line.size());
    EXPECT_GE(reader->units, 500u);
}

}  // namespace
}  // namespace vemo::test
