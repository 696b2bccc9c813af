// Money over time, and value added tax.
//
//     compound ($1,000) (10) (5%)        $1,628.89    what it grows to in 10 years at 5% a year
//     instalment ($20,000) (60) (6%)     $386.66      a month, over 60 months at 6% a year
//     gross ($100) (0.19)                $119
//     net ($119) (0.19)                  $100
//     gross $50                          $60          at the usual rate, which is the name "vat rate" too
//
// Two amounts with units side by side are added up before a function sees them, as in 5 ft 11 in. So a plain number
// stands between the amount and the percentage, or the rate is written as a plain number.

const usualRate = {double: 20, unitId: "percent"};
vemo.setVariable("vat rate", usualRate);

// 5% comes as an amount of 5 in "percent", 0.05 as a plain amount.
const share = rate => rate.unitId === "percent" ? rate.double / 100 : rate.double;
// An amount in the unit, such as a currency, of another.
const like = (argument, amount) => ({double: amount, unitId: argument.unitId});

vemo.addFunction({id: "compound", phrases: "compound,compound interest"}, ([capital, years, rate]) => {
    if (!capital || !rate || !years) return undefined; // no result: the line stays as it is written
    return like(capital, capital.double * (1 + share(rate)) ** years.double);
});

vemo.addFunction({id: "instalment", phrases: "instalment,installment,monthly payment"}, ([loan, months, rate]) => {
    if (!loan || !rate || !months) return undefined;
    const monthly = share(rate) / 12;
    if (monthly === 0) return like(loan, loan.double / months.double);
    return like(loan, loan.double * monthly / (1 - (1 + monthly) ** -months.double));
});

vemo.addFunction({id: "gross", phrases: "gross"}, ([net, rate = usualRate]) =>
    net && like(net, net.double * (1 + share(rate))));

vemo.addFunction({id: "net", phrases: "net"}, ([gross, rate = usualRate]) =>
    gross && like(gross, gross.double / (1 + share(rate))));
