// SPDX-License-Identifier: MIT
// Lines that say the same in other words, or whose terms commute, give the same.

#include "support/lines.h"

namespace vemo::test {
namespace {

struct Pair {
    const char* one;
    const char* other;
};

void allAgree(std::span<const Pair> pairs) {
    for (const Pair& pair : pairs)
        holds(
            [&] {
                Filling filling;
                const std::string one = filled(pair.one, tongues()[0], filling);
                const std::string other = filled(pair.other, tongues()[0], filling);
                requireSameUpToRounding(tongues()[0], one, other);
            },
            60);
}

TEST(PhraseLaws, termsCommute) {
    constexpr Pair pairs[] = {{"{n1} + {n2}", "{n2} + {n1}"},
                              {"{n1} * {n2}", "{n2} * {n1}"},
                              {"{m1} + {m2} + {m3}", "{m3} + {m1} + {m2}"},
                              {"{w1} * {m1}", "{m1} * {w1}"},
                              {"{m1} * {w1} h", "{w1} h * {m1}"},
                              {"{n1} - {n2}", "-({n2} - {n1})"},
                              {"{n1} / {n2}", "1 / ({n2} / {n1})"},
                              {"{n1} {l1} + {n2} {l2} in {l1}", "{n2} {l2} + {n1} {l1} in {l1}"},
                              {"{w1} & {w2}", "{w2} & {w1}"},
                              {"{w1} xor {w2} xor {w1}", "{w2}"},
                              {"max({n1}; {n2}; {n3})", "max({n3}; {n1}; {n2})"},
                              {"gcd({w1}; {w2})", "gcd({w2}; {w1})"},
                              {"average({n1}; {n2})", "({n1} + {n2}) / 2"},
                              {"{d1} + {w1} days", "{w1} days + {d1}"},
                              {"{t1} + {w1} min", "{w1} min + {t1}"},
                              {"{w1} h + {w2} min", "{w2} min + {w1} h"},
                              {"{m1}/hour * {w1} h", "{w1} h * {m1}/hour"},
                              {"{n1} km/h * {w1} h", "{w1} h * {n1} km/h"},
                              {"{n1} km/h + {n2} mph in km/h", "{n2} mph + {n1} km/h in km/h"},
                              {"{n1} * ({n2} + {n3})", "{n1} * {n2} + {n1} * {n3}"},
                              {"{w1}^2 * {w1}^3", "{w1}^5"}};
    allAgree(pairs);
}

TEST(PhraseLaws, percentagesAreFactors) {
    constexpr Pair pairs[] = {{"{p1}% of {n1}", "{n1} * {p1}/100"},
                              {"{p1}% of {m1}", "{m1} * {p1}%"},
                              {"{n1} + {p1}%", "{n1} * (1 + {p1}/100)"},
                              {"{m1} - {p1}%", "{m1} * (1 - {p1}/100)"},
                              {"{p1}% off {m1}", "{m1} - {p1}%"},
                              {"{p1}% on {n1}", "{n1} + {p1}%"},
                              {"{p1}% more than {n1}", "{n1} + {p1}%"},
                              {"{p1}% cheaper than {m1}", "{m1} - {p1}%"},
                              {"{p1}% discount on {m1}", "{m1} - {p1}%"},
                              {"{m1} with {p1}% discount", "{m1} - {p1}%"},
                              {"{m1} {p1}% off", "{m1} - {p1}%"},
                              {"{p1}% tip on {m1}", "{p1}% of {m1}"},
                              {"tip {p1}% on {m1}", "{p1}% of {m1}"},
                              {"increase {n1} by {p1}%", "{n1} + {p1}%"},
                              {"reduce {m1} by {p1}%", "{m1} - {p1}%"},
                              {"{p1}% of {p2}% of {m1}", "{p2}% of {p1}% of {m1}"},
                              {"{p1}% off {p2}% off {m1}", "{p2}% off {p1}% off {m1}"},
                              {"{p1}% off {p2}% off {m1}", "{m1} - {p1}% - {p2}%"},
                              {"{n1} / {p1}%", "{p1}% of what is {n1}"},
                              {"{p1}% on what is {n1}", "{n1} / (1 + {p1}/100)"},
                              {"{p1}% off what is {n1}", "{n1} / (1 - {p1}/100)"},
                              {"{m1} is {p1}% off what", "{p1}% off what is {m1}"},
                              {"{n1} is {p1}% more than what", "{p1}% on what is {n1}"},
                              {"{n1} as a % of {n2}", "what % of {n2} is {n1}"},
                              {"{n1} is what % of {n2}", "{n1} as a % of {n2}"},
                              {"{n1} out of {n2} as %", "{n1} / {n2} in %"},
                              {"what percent is {n1} of {n2}", "{n1} / {n2} as %"},
                              {"% change {n1} to {n2}", "{n1} to {n2} is what % change"},
                              {"percent change from {n1} to {n2}", "({n2} - {n1}) / {n1} in %"},
                              {"half of {m1}", "50% of {m1}"},
                              {"{p1}% of {n1} km", "{n1} km * {p1}%"},
                              {"{p1}% of ({n1} + {n2})", "{p1}% of {n1} + {p1}% of {n2}"}};
    allAgree(pairs);
}

TEST(PhraseLaws, questionsAreConversionsAndQuotients) {
    constexpr Pair pairs[] = {{"how many {l1} in {n1} {l2}", "{n1} {l2} in {l1}"},
                              {"how many {l1} are {n1} {l2}?", "{n1} {l2} to {l1}"},
                              {"convert {n1} {l1} to {l2}", "{n1} {l1} as {l2}"},
                              {"{n1} {l1} -> {l2}", "{n1} {l1} in {l2}"},
                              {"{n1} {l1} in {l2} in {l3}", "{n1} {l1} in {l3}"},
                              {"{n1} {l1} in {l2} in {l1}", "{n1} {l1}"},
                              {"{n1} kg in lb in g", "{n1} kg in g"},
                              {"{n1} °C in °F in °C", "{n1} °C"},
                              {"{n1} m2 in sq ft in m2", "{n1} m2"},
                              {"{n1} mpg in l/100km in mpg", "{n1} mpg"},
                              {"{n1} GB in MiB in GB", "{n1} GB"},
                              {"{m1} in EUR in USD", "{m1}"},
                              {"{m1} in JPY in EUR", "{m1} in EUR"},
                              {"how many {w1} m in {n1} km", "{n1} km in m / {w1} m"},
                              {"split {m1} between {w1} people", "{m1} / {w1}"},
                              {"{m1} split {w1} ways", "{m1} / {w1}"},
                              {"{w1} tickets at {m1}", "{m1} * {w1}"},
                              {"{w1} @ {n1}", "{n1} * {w1}"},
                              {"{w1} h at {m1}/hour", "{m1}/hour * {w1} h"},
                              {"{n1} km at {w1} km/h", "{n1} km / {w1} km/h"},
                              {"{w1} dozen", "12 * {w1}"},
                              {"twice {n1}", "2 * {n1}"},
                              {"{n1} squared", "{n1}^2"},
                              {"{w1} to the power of 3", "{w1}³"},
                              {"square root of {n1}", "√{n1}"},
                              {"sqrt {n1} ^ 2", "(sqrt({n1}))^2"},
                              {"{n1} less than {n2}", "{n2} - {n1}"},
                              {"{n1} divided by {w1} times {w2}", "{n1} / {w1} * {w2}"},
                              {"{n1} k", "{n1} thousand"},
                              {"{m1} million", "{m1} * 1000000"}};
    allAgree(pairs);
}

TEST(PhraseLaws, datesAndDurationsComeBack) {
    constexpr Pair pairs[] = {{"{d1} + {w1} days - {w1} days", "{d1}"},
                              {"{d1} - {w1} weeks + {w1} weeks", "{d1}"},
                              {"{w1} days after {d1}", "{d1} + {w1} days"},
                              {"{w1} weeks before {d1}", "{d1} - {w1} weeks"},
                              {"{w1} days from {d1}", "{w1} days after {d1}"},
                              {"({d1} + {w1} days) - {d1}", "{d1} - ({d1} - {w1} days)"},
                              {"days from {d1} to {d2}", "days between {d1} and {d2}"},
                              {"{d2} - {d1} in days", "-({d1} - {d2}) in days"},
                              {"{d1} + {w1} weeks", "{d1} + {w1} * 7 days"},
                              {"{d1} + {w1} days + {w2} days", "{d1} + {w2} days + {w1} days"},
                              {"{t1} to {t2}", "from {t1} to {t2}"},
                              {"{t1} + {w1} min - {w1} min", "{t1}"},
                              {"{t1} + {w1} h", "{t1} + {w1} * 60 min"},
                              {"{t1} in JST in UTC", "{t1} in UTC"},
                              {"{t1} London in Tokyo", "{t1} in London in Tokyo"},
                              {"{d1} {t1}", "{d1} at {t1}"},
                              {"{w1} h {w2} min", "{w1} h + {w2} min"},
                              {"{w1} h in min in h", "{w1} h"},
                              {"how many days in {w1} weeks", "{w1} weeks in days"},
                              {"{w1} min * {w2}", "{w2} * {w1} min"},
                              {"days until {d1}", "{d1} - today in days"},
                              {"x = {d1} + {w1} days\nweekday of x", "weekday of ({d1} + {w1} days)"},
                              {"x = {d1}\nhow long until x", "how long until {d1}"},
                              {"x = {d1}\ny = {d2}\nx to y", "{d1} to {d2}"},
                              {"x = {d1}\ny = {d2}\nx until y in weeks", "{d1} until {d2} in weeks"},
                              {"x = {d1} + {w1} days\ndays until x", "days until ({d1} + {w1} days)"},
                              {"x = {d1} - 9000 days\nage of x", "age of ({d1} - 9000 days)"},
                              {"{d1} + {w1} days + {w2} weeks", "{w2} weeks after ({d1} + {w1} days)"},
                              {"days from {d1} to {d2}", "days from ({d1}) to ({d2})"}};
    allAgree(pairs);
}

}  // namespace
}  // namespace vemo::test
