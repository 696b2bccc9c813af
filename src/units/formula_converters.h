// SPDX-License-Identifier: MIT
#pragma once

#include "units/unit_converter.h"

namespace vemo {

// Conversions that take more than a ratio. Each declines values of another source unit.

// Kelvin = celsius + 273.15, the definition of the Celsius scale (SI Brochure, 9th edition, 2.3.1).
std::shared_ptr<const ValueConverter> celsiusToKelvinConverter();
std::shared_ptr<const ValueConverter> kelvinToCelsiusConverter();
// Kelvin = (fahrenheit + 459.67) × 5/9 (NIST SP 811, appendix B.8).
std::shared_ptr<const ValueConverter> fahrenheitToKelvinConverter();
std::shared_ptr<const ValueConverter> kelvinToFahrenheitConverter();

// Pixels by the variable "ppi" (pixels an inch of 0.0254 m); declined when it has no amount.
std::shared_ptr<const ValueConverter> pixelToMeterConverter();
std::shared_ptr<const ValueConverter> meterToPixelConverter();
// Root ems: 16 pixels each, as browsers have it.
std::shared_ptr<const ValueConverter> remToMeterConverter();
std::shared_ptr<const ValueConverter> meterToRemConverter();
// Ems by the variable "em", an amount in any unit of length but em itself. `converter` must outlive them.
std::shared_ptr<const ValueConverter> emToMeterConverter(const UnitConverter& converter);
std::shared_ptr<const ValueConverter> meterToEmConverter(const UnitConverter& converter);

// Money, by the rates that the context holds; those of currencies are looked for among the crypto-currencies' too. An
// unknown rate gives not-a-number in the same unit.
enum class Rates { currency, crypto };
std::shared_ptr<const ValueConverter> currencyToUsdConverter(std::u16string currencyUnitId, Rates rates);
std::shared_ptr<const ValueConverter> usdToCurrencyConverter(std::u16string currencyUnitId, Rates rates);

}  // namespace vemo
