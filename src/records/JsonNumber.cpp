#include "records/JsonNumber.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace {

struct Parts {
    bool negative = false;
    std::string_view integer;
    std::string_view fraction;
    std::string_view exponent;
};

std::string_view takeDigits(std::string_view &text) {
    const auto end =
        std::find_if_not(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    const auto count = static_cast<std::size_t>(end - text.begin());
    const auto digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

std::optional<Parts> split(std::string_view text) {
    Parts parts;
    if (!text.empty() && text.front() == '-') {
        parts.negative = true;
        text.remove_prefix(1);
    }
    parts.integer = takeDigits(text);
    if (parts.integer.empty() || (parts.integer.size() > 1 && parts.integer.front() == '0'))
        return std::nullopt;
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        parts.fraction = takeDigits(text);
        if (parts.fraction.empty())
            return std::nullopt;
    }
    if (!text.empty() && (text.front() == 'e' || text.front() == 'E')) {
        text.remove_prefix(1);
        const auto whole = text;
        if (!text.empty() && (text.front() == '-' || text.front() == '+'))
            text.remove_prefix(1);
        if (takeDigits(text).empty())
            return std::nullopt;
        parts.exponent = whole.substr(0, whole.size() - text.size());
    }
    if (!text.empty())
        return std::nullopt;
    return parts;
}

} // namespace

bool JsonNumber::isNumber(std::string_view text) {
    return split(text).has_value();
}

std::optional<std::int64_t> JsonNumber::exactInteger(std::string_view text) {
    const auto parts = split(text);
    if (!parts)
        return std::nullopt;

    std::string digits(parts->integer);
    digits += parts->fraction;
    const auto firstDigit = digits.find_first_not_of('0');
    if (firstDigit == std::string::npos)
        return 0;

    long exponent = 0;
    if (!parts->exponent.empty()) {
        auto written = parts->exponent;
        if (written.front() == '+')
            written.remove_prefix(1);
        const auto end = written.data() + written.size();
        if (std::from_chars(written.data(), end, exponent).ec != std::errc())
            return std::nullopt;
        if (exponent > 1000000 || exponent < -1000000)
            return std::nullopt;
    }
    const long pointAt = static_cast<long>(parts->integer.size()) + exponent;
    const long length = static_cast<long>(digits.size());
    if (pointAt < length) {
        const auto fractionAt = static_cast<std::size_t>(std::max(pointAt, 0L));
        if (digits.find_first_not_of('0', fractionAt) != std::string::npos)
            return std::nullopt;
        digits.resize(fractionAt);
    } else if (pointAt - static_cast<long>(firstDigit) > 19) {
        return std::nullopt;
    } else {
        digits.append(static_cast<std::size_t>(pointAt - length), '0');
    }

    const std::string written = (parts->negative ? "-" : "") + digits;
    std::int64_t value = 0;
    const auto end = written.data() + written.size();
    const auto result = std::from_chars(written.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}
