// Typing and checking the values of argument binds: request text reaches the
// database only as a parameter of the bind's type, and only when it fits.
#include "runtime/values.hpp"

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace vlrun {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string LowerBaseName(std::string_view name) {
    std::string out;
    for (char c : name.substr(0, name.find('('))) {
        if (c == ' ' || c == '\t') continue;
        out += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    }
    return out;
}

// Digits in a decimal's text, or -1 when it is not a decimal.
int DecimalDigits(std::string_view s) {
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) i++;
    int digits = 0;
    bool point = false;
    for (; i < s.size(); i++) {
        if (IsDigit(s[i]))
            digits++;
        else if (s[i] == '.' && !point)
            point = true;
        else
            break;
    }
    if (digits == 0) return -1;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        i++;
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) i++;
        std::size_t start = i;
        while (i < s.size() && IsDigit(s[i]))
            i++;
        if (i == start) return -1;
    }
    return i == s.size() ? digits : -1;
}

std::size_t Utf8Length(std::string_view s) {
    std::size_t n = 0;
    for (char c : s)
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) n++;
    return n;
}

} // namespace

ValueType ValueTypeOf(std::string_view dataType, int dataTypeId) {
    static constexpr std::string_view kIntegers[] = {
        "int",  "integer", "smallint", "tinyint", "bigint", "mediumint", "int2",
        "int4", "int8",    "serial",   "bigserial", "bit",  "bool",      "boolean"};
    static constexpr std::string_view kNumerics[] = {
        "decimal", "numeric", "number", "float",  "real",  "double",
        "doubleprecision", "money", "float4", "float8", "smallmoney"};
    std::string name = LowerBaseName(dataType);
    if (!name.empty()) {
        for (std::string_view t : kIntegers)
            if (name == t) return ValueType::Integer;
        for (std::string_view t : kNumerics)
            if (name == t) return ValueType::Numeric;
        return ValueType::Text;
    }
    switch (dataTypeId) {
    case 4:
    case 5:
    case -5:
    case -6:
    case -7:
        return ValueType::Integer;
    case 2:
    case 3:
    case 6:
    case 7:
    case 8:
        return ValueType::Numeric;
    default:
        return ValueType::Text;
    }
}

bool ToTypedValue(std::string_view dataType, int dataTypeId, int size, const std::string *text,
                TypedValue &out, std::string &message) {
    out = TypedValue();
    out.type = ValueTypeOf(dataType, dataTypeId);
    if (!text) return true;
    std::string_view s(*text);
    if (out.type == ValueType::Text) {
        out.null = false;
        if (size > 0 && Utf8Length(s) > static_cast<std::size_t>(size)) {
            message = "is longer than " + std::to_string(size) + " characters";
            return false;
        }
        return true;
    }
    if (s.empty()) return true;
    out.null = false;
    if (out.type == ValueType::Integer) {
        std::size_t digitsFrom = s[0] == '+' || s[0] == '-' ? 1 : 0;
        bool digits = s.size() > digitsFrom;
        for (std::size_t i = digitsFrom; i < s.size(); i++)
            digits = digits && IsDigit(s[i]);
        int bytes = size == 1 || size == 2 || size == 4 ? size : 8;
        long long limit = bytes == 8 ? 0 : 1LL << (bytes * 8 - 1);
        errno = 0;
        out.integer = digits ? std::strtoll(text->c_str(), nullptr, 10) : 0;
        if (!digits || errno == ERANGE || (limit && (out.integer >= limit || out.integer < -limit))) {
            message = digits ? "is out of the range of its integer type" : "is not an integer";
            return false;
        }
        return true;
    }
    int digits = DecimalDigits(s);
    out.number = digits < 0 ? 0 : std::strtod(text->c_str(), nullptr);
    if (digits < 0 || !std::isfinite(out.number)) {
        message = "is not a number";
        return false;
    }
    if (size > 0 && digits > size) {
        message = "has more than " + std::to_string(size) + " digits";
        return false;
    }
    return true;
}

} // namespace vlrun
