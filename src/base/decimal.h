// Decimal numbers of text files, in and out, whatever the locale.
#pragma once

#include <string>
#include <string_view>

// The decimal number at the start of the text: sign, digits, point, digits, exponent, as far as they make one; 0 when
// there is none. Beyond a double's range it is infinite or 0.
double leading_decimal(std::string_view text);

// The number with so many significant digits and no trailing zeros, with an exponent where that is shorter: the form
// "%.16g".
std::string decimal_text(double value, int significant_digits = 16);
