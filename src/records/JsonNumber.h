#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// JSON numbers as text, where a double would not be exact.
namespace JsonNumber {

/// Whether the text is a number by JSON's grammar.
bool isNumber(std::string_view text);

/// The value of a JSON number that is an integer within 64 bits, however it is written ("24",
/// "24.0", "2.4e1"). Absent for every other text. Never goes through a double.
std::optional<std::int64_t> exactInteger(std::string_view text);

} // namespace JsonNumber
