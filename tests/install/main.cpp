// SPDX-License-Identifier: MIT
#include <iostream>
#include <vemo/engine.h>

int main() {
    vemo::VemoEngine engine;
    engine.buildVemoWorker();
    vemo::Context context;
    const auto result = engine.calculateSync(u"5 inch in cm", context);
    std::cout << vemo::utf8(*result->lines[0].formattedResult().regular) << '\n';
}
