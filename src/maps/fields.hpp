// The fields of the bind records, one table per record kind: the name a field
// has in the map file, where it lies in the record, what kind of value it holds
// and how the map file and a copy treat it. The destructors, the copy, the map
// file's reader and writer and the tests' field text all walk these tables, so
// a new field is one line here. Each table lists its fields in the order the
// map file writes them. Records nest one level: a bind holds lists of child
// records, and these hold no records (not part of the C interface).
#ifndef VELMORA_MAPS_FIELDS_HPP
#define VELMORA_MAPS_FIELDS_HPP

#include <cstddef>
#include <span>
#include <string_view>

#include "util/list.h"

enum class FieldKind {
    Text,      // char *: one line
    LongText,  // char *: may hold newlines; the map file puts an empty line after it
    Choice,    // char *: one of the field's choices
    Int,       // int
    Long,      // long
    Flag,      // int, written "True" or "False"
    Lines,     // SutList of char *: one line per item
    LongLines, // SutList of char *: one LongText per item
    Count,     // the SutList of child records at the same offset: only its size is written
    Records,   // SutList of owned child records of the kind `children` (which holds no Records)
    Handle,    // void *: neither owned nor written
};

enum FieldFlag : unsigned {
    kMemoryOnly = 1U << 0,  // not in the map file
    kInHeader = 1U << 1,    // written in the "*spid.name" line that opens the bind
    kOpensRecord = 1U << 2, // its line makes a new child record in the map file
    kEndsAtDot = 1U << 3,   // the reader takes its value only up to a "." or ":"
    kNotCopied = 1U << 4,   // a copy leaves it empty: the copy feeds no widget yet
};

struct BindRecordKind;

struct BindField {
    const char *name; // in the map file, less the blank before the colon
    size_t offset;
    FieldKind kind;
    unsigned flags = 0;
    std::span<const char *const> choices = {};
    const BindRecordKind *children = nullptr; // Records
};

struct BindRecordKind {
    std::span<const BindField> fields;
    void *(*make)(); // a new record with its starting values
};

extern const BindRecordKind kColBindKind;
extern const BindRecordKind kCallbackBindKind;
extern const BindRecordKind kArgBindKind;
extern const BindRecordKind kSPBindKind;

// The field of a record as a T.
template <typename T> T &FieldOf(void *record, const BindField &field) {
    return *reinterpret_cast<T *>(static_cast<char *>(record) + field.offset);
}
template <typename T> const T &FieldOf(const void *record, const BindField &field) {
    return *reinterpret_cast<const T *>(static_cast<const char *>(record) + field.offset);
}

// The field of that name among the record's fields, or null.
const BindField *FindBindField(const BindRecordKind &kind, std::string_view name);

// Frees what the record owns (strings, lists, child records) and the record.
void DestroyBindRecord(void *record, const BindRecordKind &kind);

// Copies every field of src into dest, child records by position as far as
// both have them; kNotCopied fields are left empty.
void CopyBindFields(void *dest, const void *src, const BindRecordKind &kind);

#endif
