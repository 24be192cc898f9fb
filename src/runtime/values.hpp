// The typed value of an argument bind: its type (integer, numeric or text,
// from the bind's data type name or number) and the check that the request's
// text fits that type and the bind's size before it is bound as a parameter.
#ifndef VELMORA_RUNTIME_VALUES_HPP
#define VELMORA_RUNTIME_VALUES_HPP

#include <string>
#include <string_view>

namespace vlrun {

enum class ValueType { Integer, Numeric, Text };

// "int", "smallint", "bigint", ... are integers; "decimal", "numeric",
// "float", "real", "double", "money", ... numeric; other names text. Without
// a name, the ODBC type number decides (4, 5, -5, -6, -7 integer; 2, 3, 6,
// 7, 8 numeric).
ValueType ValueTypeOf(std::string_view dataType, int dataTypeId);

struct TypedValue {
    ValueType type = ValueType::Text;
    bool null = true;
    long long integer = 0;
    double number = 0;
};

// Checks text (null: no value) against the type and size: an integer is
// optional sign and digits within the range of size bytes (1, 2 or 4; else 8);
// a number is a decimal (optional fraction and exponent) with at most size
// digits; a text has at most size characters (UTF-8). An empty integer or
// number is null. Size 0 or less does not limit. False with a message when
// the value does not fit.
bool ToTypedValue(std::string_view dataType, int dataTypeId, int size, const std::string *text,
                TypedValue &out, std::string &message);

} // namespace vlrun

#endif
