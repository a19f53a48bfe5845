// Reads the library's result object, JSON text, straight into a dict of the Document's
// attributes with their values converted, so that a document does not pay for a generic
// JSON decode and then a renaming pass in Python. What to rename and how to convert is a
// schema the Python side owns; text the reader does not handle is left to the Python path.
#pragma once

#include "python_api.h"

namespace orvane_python {

// One member of the library's object: the Document attribute it fills (null: skipped),
// and its conversion: none (null), a dict to look the value up in (missing: None), or a
// callable taking the value (one that raises ValueError gives None).
struct SchemaEntry {
    const char* member;
    Py_ssize_t memberLength;
    PyObject* attribute;
    PyObject* convert;
};

// The members in the order the library writes them, so that finding one is mostly a step
// forward; and the attributes' defaults, which every result starts from.
struct Schema {
    SchemaEntry* entries;
    Py_ssize_t count;
    PyObject* defaults;
    PyObject* keep;  // the tuple the entries point into
};

// Takes a tuple of (member, attribute or None, conversion or None) and a dict of defaults;
// false with a Python exception set when they do not have that shape.
bool compileSchema(PyObject* entries, PyObject* defaults, Schema* schema);
void releaseSchema(Schema* schema);

enum class ReadOutcome { kRead, kUnsupported, kError };

// Reads one JSON object of the given length into a new dict (*values). scratch holds at
// least length bytes. kUnsupported, with no exception set, for text beyond what the library
// writes (numbers with a fraction, code points past U+00FF, raw bytes outside printable
// ASCII, deep nesting, malformed text); kError with an exception set.
ReadOutcome readResult(const Schema& schema, const char* text, Py_ssize_t length, char* scratch, PyObject** values);

}  // namespace orvane_python
