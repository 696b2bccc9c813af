// SPDX-License-Identifier: MIT
#include "session/common_words.h"

#include <string>

namespace vemo::session {

namespace {

// Each stands between two commas. Of words with the same beginning, the first is typed most.
constexpr std::u16string_view words =
    // what is asked
    u",in,of,off,on,to,total,sum,average,avg,prev,today,tomorrow,yesterday,now,time,until,from,and,as,per,plus,minus"
    u",times,divided by,percent,what,ago,next,last,tip"
    // functions and numbers
    u",sqrt,square root,sin,cos,tan,round,floor,ceil,abs,max,min,log,ln,pi,hex,binary,octal,decimal,million,billion"
    u",thousand"
    // lengths and weights
    u",km,kg,kilometers,kilometres,kilograms,cm,centimeters,centimetres,m,meters,metres,mm,millimeters,millimetres"
    u",miles,mile,inches,inch,feet,ft,foot,yards,yard,g,grams,lb,lbs,pounds,pound,ounces,oz,stone,tonnes,tons"
    // volumes and areas
    u",ml,milliliters,millilitres,liters,litres,l,gallons,gallon,fl oz,pints,pint,cups,cup,tablespoons,tbsp,teaspoons"
    u",tsp,sq ft,sq m,sq km,sq miles,square feet,square meters,square metres,square miles,square kilometers"
    u",cubic meters,cubic metres,cubic feet,hectares,ha,acres,acre"
    // what else has units
    u",hours,hour,minutes,minute,seconds,second,days,day,weeks,week,months,month,years,year,celsius,fahrenheit,degrees"
    u",mph,km/h,knots,psi,bar,calories,kcal,kWh,kW,watts,joules,GB,gigabytes,MB,megabytes,TB,KB,bytes,bits,Mbit"
    // money
    u",USD,EUR,GBP,JPY,CHF,CAD,AUD,CNY,INR,dollars,euros,euro,dollar,yen,cents,bitcoin,";

}  // namespace

std::size_t rarityOf(std::u16string_view word) {
    std::u16string between = u",";
    return words.find(between.append(word).append(u","));
}

}  // namespace vemo::session
