// SPDX-License-Identifier: MIT
#include "functions/constants.h"

#include "base/text.h"

namespace vemo {

void registerConstants(Context& context) {
    constexpr double pi = 3.141592653589793;
    // Euler's number to 100 digits (OEIS A001113), and the molar gas constant in J/(mol K) (CODATA 2014).
    constexpr std::string_view e =
        "2.7182818284590452353602874713526624977572470936999595749669676277240766303535475945713821785251664274";
    constexpr std::string_view r = "8.3144598";
    context.setValue(Value(DecimalNumber::fromDouble(pi)), u"pi");
    context.setValue(Value(DecimalNumber::fromDouble(pi)), u"\u03c0");
    context.setValue(Value(DecimalNumber::parse(e)), u"e");
    context.setValue(Value(DecimalNumber::parse(r)), u"r");
}

bool isBuiltInConstant(std::u16string_view name, const Value& value) {
    static const Context constants = [] {
        Context context;
        registerConstants(context);
        return context;
    }();
    const Value* constant = constants.getVariable(lowercased(name));
    return constant && *constant == value;
}

}  // namespace vemo
