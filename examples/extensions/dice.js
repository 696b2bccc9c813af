// Dice.
//
//     roll 6            one die of 6 sides
//     roll (3) (6)      the sum of three
//
// The result of a line is kept as long as the line and what it uses stay the same: this is what makes a long document
// quick, and it keeps a roll from changing under one's eyes. Change the line, say by a blank, to roll again.

const most = 1000;

vemo.addFunction({id: "roll", phrases: "roll,dice"}, values => {
    const [count, sides] = values.length > 1 ? [values[0].double, values[1].double] : [1, values[0].double];
    if (!(sides >= 1) || !(count >= 1) || count > most) {
        log(`roll: takes 1 to ${most} dice of at least one side`);
        return undefined;
    }
    let sum = 0;
    for (let i = 1; i <= count; i++) sum += 1 + Math.floor(Math.random() * Math.floor(sides));
    return sum;
});
