#include "records/JsonDecoder.h"

#include <cmath>

namespace {

std::string_view numberText(JsonDecoder::Value &value) {
    auto token = value.raw_json_token();
    while (!token.empty() && (token.back() == ' ' || token.back() == '\n' || token.back() == '\r' ||
                              token.back() == '\t'))
        token.remove_suffix(1);
    return token;
}

} // namespace

void JsonDecoder::readInteger(Value value, std::int64_t &target) {
    simdjson::ondemand::json_type type;
    check(value.type().get(type), "expected an integer");
    if (type != simdjson::ondemand::json_type::number)
        fail("expected an integer");
    const auto number = JsonNumber::exactInteger(numberText(value));
    if (!number)
        fail("expected an integer of 64 bits");
    target = *number;
}

void JsonDecoder::read(Value value, Identifier &target, DateForm dates) {
    QString text;
    read(value, text, dates);
    const auto identifier = Identifier::parse(text);
    if (!identifier)
        fail("expected a UUID");
    target = *identifier;
}

void JsonDecoder::read(Value value, Date &target, DateForm dates) {
    double number = 0;
    check(value.get_double().get(number), "expected a date");
    if (dates == DateForm::secondsSince2001)
        number = number * 1000 + static_cast<double>(millisecondsTo2001);
    number = std::round(number);
    // Beyond this a double of seconds no longer tells milliseconds apart. Both forms have the one
    // limit, or a date from the service could make a file that cannot be read.
    if (!(std::abs(number) < 4e15))
        fail("a date out of range");
    target.milliseconds = static_cast<qint64>(number);
}

void JsonDecoder::skip(Value value, int depth) {
    if (depth > maximumDepth)
        fail("nested too deeply");
    simdjson::ondemand::json_type type;
    check(value.type().get(type), "broken value");
    switch (type) {
    case simdjson::ondemand::json_type::array: {
        simdjson::ondemand::array array;
        check(value.get_array().get(array), "broken list");
        for (auto result : array) {
            Value element;
            check(std::move(result).get(element), "broken list");
            skip(element, depth + 1);
        }
        break;
    }
    case simdjson::ondemand::json_type::object: {
        Object object;
        check(value.get_object().get(object), "broken object");
        for (auto result : object) {
            simdjson::ondemand::field pair;
            check(std::move(result).get(pair), "broken object");
            std::string_view key;
            check(pair.unescaped_key().get(key), "broken key");
            skip(pair.value(), depth + 1);
        }
        break;
    }
    case simdjson::ondemand::json_type::string: {
        std::string_view text;
        check(value.get_string().get(text), "broken text");
        break;
    }
    case simdjson::ondemand::json_type::number:
        if (!JsonNumber::isNumber(numberText(value)))
            fail("broken number");
        break;
    case simdjson::ondemand::json_type::boolean: {
        bool flag = false;
        check(value.get_bool().get(flag), "broken boolean");
        break;
    }
    case simdjson::ondemand::json_type::null: {
        bool isNull = false;
        check(value.is_null().get(isNull), "broken null");
        if (!isNull)
            fail("broken null");
        break;
    }
    default:
        fail("broken value");
    }
}
