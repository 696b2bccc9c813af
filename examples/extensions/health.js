// Rules of thumb about the body. None of them replaces a physician.
//
//     bmi (80 kg) (1.8)                       24.69    weight, and height in metres
//     bmi (80) (5 ft 11 in)                   24.6     weight in kilograms, and height
//     body surface (80 kg) (1.8)              2 m²
//     resting energy (80 kg) (1.8) (40)       1,647    kcal a day, halfway between the formulas for women and men
//     max heart rate 40                       180
//
// Two amounts with units side by side are added up before a function sees them, as in 5 ft 11 in; so one of them goes
// without.

// Amounts come in the unit in which they are written, so a formula says what it takes; a plain number is in the first. Ids of prefixed units are
// the prefix's letter and the unit's id.
const kilograms = {kgram: 1, gram: 0.001, pound: 0.45359237, stone: 6.35029318, ounce: 0.028349523125};
const metres = {m: 1, cm: 0.01, mm: 0.001, foot: 0.3048, inch: 0.0254};

function amountIn(units, argument, name) {
    if (!argument) throw new Error(`${name}: is missing`);
    const ratio = argument.unitId === undefined ? 1 : units[argument.unitId];
    // What is thrown is shown as a message, and the line has no result.
    if (ratio === undefined) throw new Error(`${name}: give it in one of ${Object.keys(units).join(", ")}`);
    return argument.double * ratio;
}

const weight = argument => amountIn(kilograms, argument, "weight");
const height = argument => amountIn(metres, argument, "height");

vemo.addFunction({id: "bmi", phrases: "bmi,body mass index"}, ([w, h]) => weight(w) / height(h) ** 2);

// Mosteller's formula.
vemo.addFunction({id: "body_surface", phrases: "body surface"}, ([w, h]) =>
    ({double: Math.sqrt(weight(w) * height(h) / 36), unitId: "m2"}));

// Mifflin and St Jeor's, with the mean of the constants for women and men.
vemo.addFunction({id: "resting_energy", phrases: "resting energy"}, ([w, h, age]) =>
    age && 10 * weight(w) + 625 * height(h) - 5 * age.double - 78);

// Tanaka's.
vemo.addFunction({id: "max_heart_rate", phrases: "max heart rate"}, ([age]) => age && 208 - 0.7 * age.double);
