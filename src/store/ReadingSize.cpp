#include "store/ReadingSize.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double smallest = 15;
constexpr double usual = 18;
constexpr double largest = 26;

} // namespace

double ReadingSize::limited(double size) {
    return std::clamp(size, smallest, largest);
}

double ReadingSize::stored(const std::optional<QString> &text) {
    bool isNumber = false;
    const double size = text.value_or(QString()).toDouble(&isNumber);
    return isNumber && std::isfinite(size) ? limited(size) : usual;
}
