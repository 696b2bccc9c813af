// Measures of the kitchen and of the print shop, beside the built-in spoons, cups and points.
//
//     2 dessertspoons in ml       20 ml
//     3 sticks of butter in g     340.19 g
//     10 picas in mm              42.33 mm

// Each row: id, the words that name it, the base unit of its dimension, how many of those it is, how it is shown.
// Base units are "m", "m2", "m3", "bit", "kelvin", "radian", "second" and "gram".
const rows = [
    ["pinch", "pinch,pinches", "m3", 0.3e-6, "%@ pinches"],
    ["dash", "dash,dashes", "m3", 0.6e-6, "%@ dashes"],
    ["dessertspoon", "dessertspoon,dessertspoons,dsp", "m3", 10e-6, "%@ dsp"],
    ["metric_cup", "metric cup,metric cups", "m3", 250e-6, "%@ metric cups"],
    ["butter_stick", "stick of butter,sticks of butter", "gram", 113.3980925, "%@ sticks of butter"],
    ["pica", "pica,picas", "m", 0.0254 / 6, "%@ picas"],
    ["didot", "didot,didot point,didot points", "m", 0.000376065, "%@ didot points"],
    ["cicero", "cicero,ciceros", "m", 12 * 0.000376065, "%@ ciceros"],
];
for (const [id, phrases, baseUnitId, ratio, format] of rows)
    vemo.addUnit({id, phrases, baseUnitId, ratio, format});

// More words for a unit that exists: without a ratio, nothing but the words is added.
vemo.addUnit({id: "gram", phrases: "gramme,grammes"});
