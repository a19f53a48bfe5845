#include "result_reader.h"

#include <cstring>

namespace orvane_python {
namespace {

// The library nests two deep (the elements object); anything deeper is not its text.
constexpr int kDeepestNesting = 8;
// Integers of up to 18 digits fit a long long without overflow checks.
constexpr int kLongestInteger = 18;

// Every function below returns false or null either with an exception set (memory, a
// conversion that raised) or, without one, for text the reader leaves to the Python path.
struct Reader {
    const char* at;
    const char* end;
    char* scratch;
};

void skipBlanks(Reader& r) {
    while (r.at < r.end && (*r.at == ' ' || *r.at == '\n' || *r.at == '\r' || *r.at == '\t')) ++r.at;
}

// Steps over c after any blanks; false when something else comes.
bool take(Reader& r, char c) {
    skipBlanks(r);
    if (r.at >= r.end || *r.at != c) return false;
    ++r.at;
    return true;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool giveUp(Reader&) { return false; }

PyObject* unsupported(Reader&) { return nullptr; }

// The characters of a string whose opening quote was taken, as Latin-1 bytes: in place when
// it has no escape, else unescaped into the scratch. Leaves the reader past the closing quote.
bool readStringBytes(Reader& r, const char** bytes, Py_ssize_t* length) {
    const char* p = r.at;
    while (p < r.end && *p != '"' && *p != '\\') {
        const unsigned char c = static_cast<unsigned char>(*p);
        if (c < 0x20 || c > 0x7E) return giveUp(r);
        ++p;
    }
    if (p >= r.end) return giveUp(r);
    if (*p == '"') {
        *bytes = r.at;
        *length = p - r.at;
        r.at = p + 1;
        return true;
    }
    // Unescaped text is never longer than its escaped form, so the scratch has room.
    char* out = r.scratch;
    std::memcpy(out, r.at, static_cast<size_t>(p - r.at));
    out += p - r.at;
    while (p < r.end && *p != '"') {
        const unsigned char c = static_cast<unsigned char>(*p);
        if (c != '\\') {
            if (c < 0x20 || c > 0x7E) return giveUp(r);
            *out++ = static_cast<char>(c);
            ++p;
            continue;
        }
        if (r.end - p < 2) return giveUp(r);
        const char escaped = p[1];
        p += 2;
        switch (escaped) {
            case '"': case '\\': case '/': *out++ = escaped; break;
            case 'b': *out++ = '\b'; break;
            case 'f': *out++ = '\f'; break;
            case 'n': *out++ = '\n'; break;
            case 'r': *out++ = '\r'; break;
            case 't': *out++ = '\t'; break;
            case 'u': {
                if (r.end - p < 4) return giveUp(r);
                int code = 0;
                for (int i = 0; i < 4; ++i) {
                    const int digit = hexValue(p[i]);
                    if (digit < 0) return giveUp(r);
                    code = code * 16 + digit;
                }
                // The library escapes bytes only; a wider code point is someone else's text.
                if (code > 0xFF) return giveUp(r);
                *out++ = static_cast<char>(code);
                p += 4;
                break;
            }
            default: return giveUp(r);
        }
    }
    if (p >= r.end) return giveUp(r);
    *bytes = r.scratch;
    *length = out - r.scratch;
    r.at = p + 1;
    return true;
}

PyObject* readString(Reader& r) {
    const char* bytes = nullptr;
    Py_ssize_t length = 0;
    if (!readStringBytes(r, &bytes, &length)) return nullptr;
    return PyUnicode_DecodeLatin1(bytes, length, nullptr);
}

PyObject* readNumber(Reader& r) {
    const bool negative = *r.at == '-';
    if (negative) ++r.at;
    long long value = 0;
    int digits = 0;
    while (r.at < r.end && *r.at >= '0' && *r.at <= '9') {
        if (++digits > kLongestInteger) return unsupported(r);
        value = value * 10 + (*r.at - '0');
        ++r.at;
    }
    if (digits == 0) return unsupported(r);
    if (r.at < r.end && (*r.at == '.' || *r.at == 'e' || *r.at == 'E')) return unsupported(r);
    return PyLong_FromLongLong(negative ? -value : value);
}

PyObject* readLiteral(Reader& r, const char* word, PyObject* value) {
    const size_t n = std::strlen(word);
    if (static_cast<size_t>(r.end - r.at) < n || std::memcmp(r.at, word, n) != 0) return unsupported(r);
    r.at += n;
    Py_INCREF(value);
    return value;
}

PyObject* readValue(Reader& r, int depth);

// An array, as a tuple: the Document keeps its sequences immutable.
PyObject* readArray(Reader& r, int depth) {
    PyObject* list = PyList_New(0);
    if (list == nullptr) return nullptr;
    if (!take(r, ']')) {
        for (;;) {
            PyObject* item = readValue(r, depth);
            if (item == nullptr || PyList_Append(list, item) != 0) {
                Py_XDECREF(item);
                Py_DECREF(list);
                return nullptr;
            }
            Py_DECREF(item);
            if (take(r, ',')) continue;
            if (take(r, ']')) break;
            Py_DECREF(list);
            return unsupported(r);
        }
    }
    PyObject* tuple = PyList_AsTuple(list);
    Py_DECREF(list);
    return tuple;
}

PyObject* readObject(Reader& r, int depth) {
    PyObject* dict = PyDict_New();
    if (dict == nullptr) return nullptr;
    if (take(r, '}')) return dict;
    for (;;) {
        if (!take(r, '"')) break;
        PyObject* key = readString(r);
        if (key == nullptr) break;
        PyObject* value = take(r, ':') ? readValue(r, depth) : unsupported(r);
        const int stored = value != nullptr ? PyDict_SetItem(dict, key, value) : -1;
        Py_DECREF(key);
        Py_XDECREF(value);
        if (stored != 0) break;
        if (take(r, ',')) continue;
        if (take(r, '}')) return dict;
        break;
    }
    Py_DECREF(dict);
    return nullptr;
}

PyObject* readValue(Reader& r, int depth) {
    skipBlanks(r);
    if (r.at >= r.end || depth > kDeepestNesting) return unsupported(r);
    const char c = *r.at;
    if (c == '"') {
        ++r.at;
        return readString(r);
    }
    if (c == '{') {
        ++r.at;
        return readObject(r, depth + 1);
    }
    if (c == '[') {
        ++r.at;
        return readArray(r, depth + 1);
    }
    if (c == 't') return readLiteral(r, "true", Py_True);
    if (c == 'f') return readLiteral(r, "false", Py_False);
    if (c == 'n') return readLiteral(r, "null", Py_None);
    if (c == '-' || (c >= '0' && c <= '9')) return readNumber(r);
    return unsupported(r);
}

// The entry of a member, looked for from where the last one was found: the library writes
// its members in the schema's order, so this is mostly a short step forward.
const SchemaEntry* findEntry(const Schema& schema, const char* member, Py_ssize_t length, Py_ssize_t* next) {
    for (Py_ssize_t i = 0; i < schema.count; ++i) {
        const Py_ssize_t at = (*next + i) % schema.count;
        const SchemaEntry& entry = schema.entries[at];
        if (entry.memberLength == length && std::memcmp(entry.member, member, static_cast<size_t>(length)) == 0) {
            *next = at + 1;
            return &entry;
        }
    }
    return nullptr;
}

PyObject* convertValue(const SchemaEntry& entry, PyObject* value) {
    if (entry.convert == nullptr) {
        Py_INCREF(value);
        return value;
    }
    if (PyDict_Check(entry.convert)) {
        PyObject* found = PyDict_GetItemWithError(entry.convert, value);
        if (found == nullptr) {
            if (PyErr_Occurred()) return nullptr;
            found = Py_None;
        }
        Py_INCREF(found);
        return found;
    }
    PyObject* converted = PyObject_CallFunctionObjArgs(entry.convert, value, nullptr);
    // A conversion that refuses the value (a date that is no date) gives None.
    if (converted == nullptr && PyErr_ExceptionMatches(PyExc_ValueError)) {
        PyErr_Clear();
        Py_RETURN_NONE;
    }
    return converted;
}

// One member of the top object: false with an exception set or the reader given up.
bool readMember(Reader& r, const Schema& schema, Py_ssize_t* next, PyObject* values) {
    const char* member = nullptr;
    Py_ssize_t memberLength = 0;
    if (!take(r, '"') || !readStringBytes(r, &member, &memberLength)) return giveUp(r);
    // Found before the value is read: the value may reuse the scratch the member is in.
    const SchemaEntry* entry = findEntry(schema, member, memberLength, next);
    if (!take(r, ':')) return giveUp(r);
    const bool skipped = entry == nullptr || entry->attribute == nullptr;
    skipBlanks(r);
    if (skipped && r.at < r.end && *r.at == '"') {
        // A skipped string is stepped over without making it an object.
        ++r.at;
        const char* bytes = nullptr;
        Py_ssize_t length = 0;
        return readStringBytes(r, &bytes, &length);
    }
    PyObject* value = readValue(r, 1);
    if (value == nullptr) return false;
    if (skipped) {
        Py_DECREF(value);
        return true;
    }
    PyObject* converted = convertValue(*entry, value);
    Py_DECREF(value);
    if (converted == nullptr) return false;
    const int stored = PyDict_SetItem(values, entry->attribute, converted);
    Py_DECREF(converted);
    return stored == 0;
}

}  // namespace

bool compileSchema(PyObject* entries, PyObject* defaults, Schema* schema) {
    *schema = Schema{nullptr, 0, nullptr, nullptr};
    if (!PyTuple_Check(entries) || !PyDict_Check(defaults)) {
        PyErr_SetString(PyExc_TypeError, "the schema is a tuple of entries and a dict of defaults");
        return false;
    }
    const Py_ssize_t count = PyTuple_Size(entries);
    if (count < 1) {
        PyErr_SetString(PyExc_ValueError, "the schema has no entries");
        return false;
    }
    schema->entries = static_cast<SchemaEntry*>(PyMem_Calloc(static_cast<size_t>(count), sizeof(SchemaEntry)));
    if (schema->entries == nullptr) {
        PyErr_NoMemory();
        return false;
    }
    for (Py_ssize_t i = 0; i < count; ++i) {
        PyObject* item = PyTuple_GetItem(entries, i);
        PyObject* member = nullptr;
        PyObject* attribute = nullptr;
        PyObject* convert = nullptr;
        if (!PyTuple_Check(item) || !PyArg_ParseTuple(item, "UOO", &member, &attribute, &convert) ||
            (attribute != Py_None && !PyUnicode_Check(attribute))) {
            if (!PyErr_Occurred()) PyErr_SetString(PyExc_TypeError, "a schema entry is (member, attribute or None, conversion or None)");
            releaseSchema(schema);
            return false;
        }
        SchemaEntry& entry = schema->entries[i];
        entry.member = PyUnicode_AsUTF8AndSize(member, &entry.memberLength);
        if (entry.member == nullptr) {
            releaseSchema(schema);
            return false;
        }
        // Borrowed from the tuple, which the schema keeps alive.
        entry.attribute = attribute == Py_None ? nullptr : attribute;
        entry.convert = convert == Py_None ? nullptr : convert;
        ++schema->count;
    }
    Py_INCREF(entries);
    Py_INCREF(defaults);
    schema->keep = entries;
    schema->defaults = defaults;
    return true;
}

void releaseSchema(Schema* schema) {
    PyMem_Free(schema->entries);
    Py_XDECREF(schema->keep);
    Py_XDECREF(schema->defaults);
    *schema = Schema{nullptr, 0, nullptr, nullptr};
}

ReadOutcome readResult(const Schema& schema, const char* text, Py_ssize_t length, char* scratch, PyObject** values) {
    *values = nullptr;
    Reader r{text, text + length, scratch};
    PyObject* result = PyDict_Copy(schema.defaults);
    if (result == nullptr) return ReadOutcome::kError;
    bool read = take(r, '{');
    if (read && !take(r, '}')) {
        Py_ssize_t next = 0;
        for (;;) {
            if (!readMember(r, schema, &next, result)) {
                read = false;
                break;
            }
            if (take(r, ',')) continue;
            read = take(r, '}');
            break;
        }
    }
    if (read) {
        skipBlanks(r);
        read = r.at == r.end;
    }
    if (read) {
        *values = result;
        return ReadOutcome::kRead;
    }
    Py_DECREF(result);
    if (PyErr_Occurred()) return ReadOutcome::kError;
    return ReadOutcome::kUnsupported;
}

}  // namespace orvane_python
