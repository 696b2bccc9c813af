// SPDX-License-Identifier: MIT
#include <vemo/engine.h>

#include <iostream>

int main() {
    vemo::VemoEngine engine;
    engine.buildVemoWorker();
    vemo::Context context;
    const auto result = engine.calculateSync(u"5 inch in cm", context);
    std::cout << vemo::utf8(*result->lines[0].formattedResult().regular) << '\n';
}
