#pragma once

#include <string>

namespace tarnix {

/// The shortest decimal text that reads back as `number`: without a fraction where it has none
/// ("3", "1.5"), with an exponent where the digits alone would run long ("1e+20", "2.5e-07"), the
/// same in every locale.
std::string describeNumber(double number);

}  // namespace tarnix
