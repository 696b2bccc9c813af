// SPDX-License-Identifier: MIT
// The same amounts give the same value in every language that the line is written in.

#include <unicode/rbnf.h>

#include "support/lines.h"

namespace vemo::test {
namespace {

// One calculation in English, German, French, Spanish and Japanese; in some of them in several ways.
struct Saying {
    std::vector<const char*> ways[5];
};

void allAgree(const std::vector<Saying>& sayings) {
    for (const Saying& saying : sayings)
        holds(
            [&] {
                Filling filling;
                const std::string english = filled(saying.ways[0][0], tongues()[0], filling);
                const Told expected = Notepad::in(tongues()[0]).last(english);
                for (std::size_t i = 0; i < tongues().size(); ++i)
                    for (const char* way : saying.ways[i]) {
                        const std::string line = filled(way, tongues()[i], filling);
                        const Told told = Notepad::in(tongues()[i]).last(line);
                        if (told.value == expected.value && !told.shown.empty()) continue;
                        RC_FAIL("\n  " + english + "\n    gives " + expected.shown + expected.remarks + "\n  " + line +
                                "\n    gives " + told.shown + told.remarks + "\n");
                    }
            },
            40);
}

TEST(LanguageLaws, arithmeticInWords) {
    allAgree({
        {{{"{n1} plus {n2}"}, {"{n1} plus {n2}"}, {"{n1} plus {n2}"}, {"{n1} más {n2}"}, {"{n1} 足す {n2}"}}},
        {{{"{n1} minus {n2}"}, {"{n1} minus {n2}"}, {"{n1} moins {n2}"}, {"{n1} menos {n2}"}, {"{n1} 引く {n2}"}}},
        {{{"{n1} times {w1}"}, {"{n1} mal {w1}"}, {"{n1} fois {w1}"}, {"{n1} por {w1}"}, {"{n1} 掛ける {w1}"}}},
        {{{"{n1} divided by {w1}"},
          {"{n1} geteilt durch {w1}"},
          {"{n1} divisé par {w1}"},
          {"{n1} dividido entre {w1}", "{n1} dividido por {w1}", "{n1} entre {w1}"},
          {"{n1} 割る {w1}"}}},
        {{{"square root of {n1}", "sqrt {n1}", "√{n1}"},
          {"Wurzel {n1}", "Quadratwurzel aus {n1}"},
          {"racine carrée de {n1}", "racine {n1}"},
          {"raíz cuadrada de {n1}"},
          {"平方根 {n1}", "ルート({n1})"}}},
        {{{"max({n1}; {n2}; {n3})"},
          {"max({n1}; {n2}; {n3})"},
          {"max({n1} ; {n2} ; {n3})"},
          {"max({n1}; {n2}; {n3})"},
          {"最大({n1}; {n2}; {n3})"}}},
        {{{"average({n1}; {n2}; {n3})"},
          {"Mittelwert({n1}; {n2}; {n3})"},
          {"moyenne({n1} ; {n2} ; {n3})"},
          {"promedio({n1}; {n2}; {n3})"},
          {"平均({n1}; {n2}; {n3})"}}},
        {{{"{w1} dozen"}, {"{w1} Dutzend"}, {"{w1} douzaines"}, {"{w1} docenas"}, {"{w1}ダース"}}},
        {{{"twice {n1}"}, {"das Doppelte von {n1}"}, {"le double de {n1}"}, {"el doble de {n1}"}, {"{n1} * 2"}}},
        {{{"{w1} million"}, {"{w1} Millionen", "{w1} Mio."}, {"{w1} millions"}, {"{w1} millones"}, {"{w1}百万"}}},
    });
}

TEST(LanguageLaws, percentages) {
    allAgree({
        {{{"{p1}% of {n1}"},
          {"{p1}% von {n1}", "{p1} Prozent von {n1}"},
          {"{p1} % de {n1}"},
          {"{p1} % de {n1}", "{p1} por ciento de {n1}"},
          {"{n1}の{p1}%", "{n1}の{p1}パーセント"}}},
        {{{"{e1} - {p1}%", "{p1}% off {e1}", "{e1} with {p1}% discount"},
          {"{p1} % Rabatt auf {e1}", "{e1} mit {p1} % Rabatt"},
          {"{p1} % de remise sur {e1}", "{e1} avec {p1} % de remise"},
          {"{p1} % de descuento en {e1}", "{e1} con {p1} % de descuento"},
          {"{e1}の{p1}%引き", "{e1}から{p1}%引き"}}},
        {{{"{n1} + {p1}%", "{p1}% more than {n1}", "increase {n1} by {p1}%"},
          {"{p1}% mehr als {n1}", "erhöhe {n1} um {p1} %", "{p1}% auf {n1}"},
          {"{p1} % de plus que {n1}", "augmenter {n1} de {p1} %", "{n1} augmenté de {p1} %"},
          {"{p1}% más que {n1}", "aumentar {n1} en {p1} %"},
          {"{n1} + {p1}%"}}},
        {{{"{p1}% less than {n1}", "{n1} - {p1}%"},
          {"{p1}% weniger als {n1}"},
          {"{p1} % de moins que {n1}", "{n1} diminué de {p1} %"},
          {"{p1}% menos que {n1}"},
          {"{n1} - {p1}%"}}},
        {{{"{n1} as a % of {n2}", "{n1} is what % of {n2}"},
          {"{n1} als % von {n2}", "{n1} sind wie viel Prozent von {n2}"},
          {"{n1} en % de {n2}"},
          {"{n1} como % de {n2}", "¿{n1} es qué % de {n2}?"},
          {"{n1}は{n2}の何%"}}},
        {{{"{p1}% of what is {n1}"},
          {"{p1}% von was sind {n1}"},
          {"{p1}% de combien fait {n1}"},
          {"{p1}% de cuánto es {n1}"},
          {"何の{p1}%が{n1}"}}},
        {{{"{p1}% tip on {e1}"},
          {"{p1} % Trinkgeld auf {e1}"},
          {"{p1} % de pourboire sur {e1}"},
          {"{p1} % de propina sobre {e1}"},
          {"{e1}の{p1}%"}}},
    });
}

TEST(LanguageLaws, conversions) {
    allAgree({
        {{{"{n1} km in miles", "how many miles in {n1} km"},
          {"{n1} km in Meilen", "{n1} Kilometer in Meilen"},
          {"{n1} km en miles", "{n1} kilomètres en miles"},
          {"{n1} km en millas", "{n1} kilómetros a millas"},
          {"{n1}kmをマイルに", "{n1}キロメートルをマイルに"}}},
        {{{"{n1} inches in cm", "how many cm in {n1} inches"},
          {"{n1} Zoll in cm", "wie viele cm sind {n1} Zoll"},
          {"{n1} pouces en cm", "combien de cm dans {n1} pouces"},
          {"{n1} pulgadas en centímetros", "cuántos cm hay en {n1} pulgadas"},
          {"{n1}インチをcm", "{n1}インチは何センチ"}}},
        {{{"{n1} cups in ml"},
          {"{n1} Tassen in ml"},
          {"{n1} tasses en ml"},
          {"{n1} tazas en ml"},
          {"{n1}米カップをml"}}},
        {{{"{n1} °C in °F"},
          {"{n1} Grad Celsius in Fahrenheit"},
          {"{n1} °C en °F"},
          {"{n1} grados Celsius en Fahrenheit"},
          {"{n1}℃は何℉"}}},
        {{{"{n1} m2 in sq ft"},
          {"{n1} qm in Quadratfuß"},
          {"{n1} mètres carrés en pieds carrés"},
          {"{n1} metros cuadrados en pies cuadrados"},
          {"{n1}平方メートルを平方フィート"}}},
        {{{"{e1} in dollars", "{e1} in USD"},
          {"{e1} in Dollar"},
          {"{e1} en dollars"},
          {"{e1} en dólares"},
          {"{e1}をドルに", "{e1}を米ドル"}}},
        {{{"{n1} km/h * {w1} h"},
          {"{n1} km/h * {w1} Stunden"},
          {"{n1} km par heure * {w1} heures"},
          {"{n1} km por hora * {w1} horas"},
          {"時速{n1}キロ × {w1}時間"}}},
        {{{"{w1} min in h"},
          {"{w1} Minuten in Stunden"},
          {"{w1} minutes en heures"},
          {"{w1} minutos en horas"},
          {"{w1}分を時間"}}},
        {{{"{w1} * {e1}", "{w1} tickets at {e1}", "{w1} x {e1}"},
          {"{w1} Karten zu {e1}", "{w1} Karten @ {e1}"},
          {"{w1} billets à {e1}"},
          {"{w1} entradas a {e1}"},
          {"{w1}枚 @ {e1}"}}},
    });
}

TEST(LanguageLaws, datesAndTimes) {
    allAgree({
        {{{"{d1}"}, {"{d1}"}, {"{d1}"}, {"{d1}"}, {"{d1}"}}},
        {{{"{d1} + {w1} days", "{w1} days after {d1}"},
          {"{d1} + {w1} Tage", "{w1} Tage nach dem {d1}"},
          {"{d1} + {w1} jours", "{w1} jours après le {d1}"},
          {"{d1} + {w1} días", "{w1} días después del {d1}"},
          {"{d1} + {w1}日", "{d1}の{w1}日後"}}},
        {{{"{w1} weeks before {d1}"},
          {"{w1} Wochen vor dem {d1}"},
          {"{w1} semaines avant le {d1}"},
          {"{w1} semanas antes del {d1}"},
          {"{d1}の{w1}週間前"}}},
        {{{"days until {d1}"},
          {"Tage bis zum {d1}", "Tage bis {d1}"},
          {"jours jusqu'au {d1}", "combien de jours avant le {d1}"},
          {"días hasta el {d1}"},
          {"{d1}まで何日"}}},
        {{{"{d1} - {d2}"}, {"{d1} - {d2}"}, {"{d1} - {d2}"}, {"{d1} - {d2}"}, {"{d1} - {d2}"}}},
        {{{"from {t1} to {t2}", "{t1} to {t2}"},
          {"von {t1} bis {t2}", "{t1} bis {t2}"},
          {"de {t1} à {t2}", "{t1} à {t2}"},
          {"de {t1} a {t2}", "desde las {t1} hasta las {t2}"},
          {"{t1}から{t2}まで"}}},
        {{{"{t1} + {w1} min"},
          {"{t1} + {w1} Minuten"},
          {"{t1} + {w1} minutes"},
          {"{t1} + {w1} minutos"},
          {"{t1} + {w1}分"}}},
        {{{"tomorrow at {t1}"}, {"morgen um {t1}"}, {"demain à {t1}"}, {"mañana a las {t1}"}, {"明日{t1}"}}},
        {{{"in {w1} days"}, {"in {w1} Tagen"}, {"dans {w1} jours"}, {"dentro de {w1} días"}, {"{w1}日後"}}},
        {{{"{w1} weeks ago"}, {"vor {w1} Wochen"}, {"il y a {w1} semaines"}, {"hace {w1} semanas"}, {"{w1}週間前"}}},
    });
}

// As people write the number, by rules that are not ours.
std::string spelled(int number, const Tongue& tongue) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::RuleBasedNumberFormat format(icu::URBNF_SPELLOUT, icu::Locale(tongue.locale), status);
    icu::UnicodeString text;
    format.format(number, text);
    std::string words;
    text.toUTF8String(words);
    return replaced(words, "\u00ad", "");
}

TEST(LanguageLaws, numbersInWords) {
    constexpr const char* beside[][3] = {{"# miles", "# * 3", "# cups in ml"},
                                         {"# Meilen", "# * 3", "# Tassen in ml"},
                                         {"# miles", "# * 3", "# tasses en ml"},
                                         {"# millas", "# * 3", "# tazas en ml"},
                                         {"#マイル", "# * 3", "#キロをグラム"}};
    for (std::size_t i = 0; i < tongues().size(); ++i)
        holds([&] {
            const Tongue& tongue = tongues()[i];
            const int number = anyOf(2, 99);
            const char* use = anyRow(beside[i]);
            requireSameValue(tongue, replaced(use, "#", std::to_string(number)),
                             replaced(use, "#", spelled(number, tongue)));
        });
}

}  // namespace
}  // namespace vemo::test
