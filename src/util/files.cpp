// Whole files in and out of memory, existence tests, line-end conversion and
// the field splitter that turns a text into a list of lines or fields.
#include "util/files.h"

#include "util/heap.hpp"
#include "util/process.h"
#include "util/safefile.h"
#include "util/strings.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool StatIs(const char *path, mode_t type) {
    struct stat st;
    return path && stat(path, &st) == 0 && (st.st_mode & S_IFMT) == type;
}

struct FileCloser {
    void operator()(FILE *f) const { std::fclose(f); }
};

} // namespace

extern "C" {

char *VlReadFileAndMod(const char *path, time_t *modTimeOut) {
    struct stat st;
    if (!path || stat(path, &st) != 0 || !S_ISREG(st.st_mode)) return nullptr;
    std::unique_ptr<FILE, FileCloser> f(std::fopen(path, "r"));
    if (!f) return nullptr;
    size_t size = static_cast<size_t>(st.st_size);
    VlCharPtr text(static_cast<char *>(std::malloc(size + 1)));
    if (!text) return nullptr;
    if (std::fread(text.get(), 1, size, f.get()) < size) return nullptr;
    text.get()[size] = '\0';
    if (modTimeOut) *modTimeOut = st.st_mtime;
    return text.release();
}

char *VlReadFile(const char *path) {
    return VlReadFileAndMod(path, nullptr);
}

char *VlReadFileToString(const char *path) {
    return VlReadFileAndMod(path, nullptr);
}

int VlWriteStrToFile(const char *path, const char *text) {
    if (!path || !*path || !text) return 1;
    // A full disk shows up as a failed write, reported with its reason.
    return VlWriteFileSafely(path, text, std::strlen(text)) >= 0 ? 0 : 1;
}

int VlFileExists(const char *path) {
    return StatIs(path, S_IFREG) ? 1 : 0;
}

int VlDirExists(const char *path) {
    if (!path) return 0;
    std::string p(path);
    // One trailing separator goes; the root "/" itself stays a name to test.
    if (p.size() > 1 && (p.back() == '/' || p.back() == '\\')) p.pop_back();
    return StatIs(p.c_str(), S_IFDIR) ? 1 : 0;
}

int VlMkdir(const char *path) {
    if (!path) return -1;
    VlCharPtr quoted(VlShellQuoteName(path));
    std::string command = "\\mkdir -p ";
    command += quoted.get();
    return VlLaunchAndBlock(command.c_str());
}

char *VlGetCurrentDir(void) {
    char buffer[1026];
    if (!getcwd(buffer, 1024)) return VlHeapCopy("");
    return VlHeapCopy(buffer);
}

char *VlDosToUnix(const char *text) {
    if (!text) return nullptr;
    // The runs between carriage returns are copied whole.
    const char *end = text + std::strlen(text);
    char *out = static_cast<char *>(std::malloc(static_cast<size_t>(end - text) + 1));
    if (!out) return nullptr;
    char *to = out;
    for (const char *p = text; p < end;) {
        const auto *cr =
            static_cast<const char *>(std::memchr(p, '\r', static_cast<size_t>(end - p)));
        const char *runEnd = cr ? cr : end;
        std::memcpy(to, p, static_cast<size_t>(runEnd - p));
        to += runEnd - p;
        p = cr ? cr + 1 : end;
    }
    *to = '\0';
    return out;
}

char *VlUnixToDos(const char *text) {
    if (!text) return nullptr;
    std::string_view t(text);
    std::string out;
    out.reserve(t.size() + t.size() / 16);
    for (size_t i = 0; i < t.size(); i++) {
        if (t[i] == '\n' && (i == 0 || t[i - 1] != '\r')) out += '\r';
        out += t[i];
    }
    return VlHeapCopy(out);
}

void VlDosToUnixSlashes(char *path) {
    if (!path) return;
    for (char *p = path; *p; ++p)
        if (*p == '\\') *p = '/';
}

SutList *VlParseFileString(const char *text, const char *delimiters, const char *quotes) {
    SutList *fields = SutNewList();
    if (!text || !*text) {
        SutAddList(fields, VlHeapCopy(""));
        return fields;
    }
    // Only the first character of each argument counts; NUL never matches.
    const char delim = delimiters ? delimiters[0] : '\0';
    const char quote = quotes ? quotes[0] : '\0';
    // Runs of ordinary characters are copied whole; only the delimiter, the
    // quote character and newlines need a decision.
    char specials[4] = {'\n', '\0', '\0', '\0'};
    int nspecial = 1;
    if (delim && delim != '\n') specials[nspecial++] = delim;
    if (quote && quote != '\n' && quote != delim) specials[nspecial++] = quote;
    std::string field;
    bool inQuotes = false;
    for (const char *p = text; *p; ++p) {
        size_t run = std::strcspn(p, specials);
        field.append(p, run);
        p += run;
        if (!*p) break;
        char c = *p;
        if (quote && c == quote) {
            if (!inQuotes) {
                inQuotes = true;
            } else if (p[1] == quote) {
                field += quote; // a doubled quote is one literal quote
                ++p;
            } else {
                inQuotes = false;
            }
        } else if (c == delim && !inQuotes) {
            SutAddList(fields, VlHeapCopy(field));
            field.clear();
        } else if (c == '\n' && c != delim) {
            field += ' ';
        } else {
            field += c;
        }
    }
    if (!field.empty()) SutAddList(fields, VlHeapCopy(field));
    return fields;
}

} // extern "C"
