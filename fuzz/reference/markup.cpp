// The reference copy of the design-time markup (src/html/markup.cpp as it
// stood before the passes jumped between candidate bytes), kept unchanged
// inside namespace vlref for the differential fuzz target.
// Design-time markup: copies a page's text to a stream and rewrites only the
// attribute values and marks that tie its forms, anchors, keyword attributes
// and sites to the names the document record holds, so the generated program
// can tell which activator a request is for. Each pass matches the n-th tag of
// its kind in the text with the n-th record of the document.

#include <cstdlib>
#include <cstring>
#include <string>

#include "html/keywords.h"
#include "reference/textscan.hpp"
#include "util/list.h"
#include "reference/reference.hpp"

namespace vlref {

using namespace vlscan;

namespace {

constexpr const char kHiddenInput[] = "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"";
constexpr size_t kHiddenLen = sizeof(kHiddenInput) - 1;

const char *Str(const char *s) {
    return s ? s : "";
}

// The output of one pass: copied runs of the text and the rewrites between them.
class Writer {
  public:
    explicit Writer(const char *text) : run_(text) {}
    void CopyTo(const char *upTo) {
        out_.append(run_, static_cast<size_t>(upTo - run_));
        run_ = upTo;
    }
    void ResumeAt(const char *at) { run_ = at; }
    std::string &Out() { return out_; }
    void Finish() { out_ += run_; }
    void Flush(FILE *stream) { fwrite(out_.data(), 1, out_.size(), stream); }

  private:
    const char *run_;
    std::string out_;
};

template <class Record> Record *RecordAt(SutList *list, int index) {
    return static_cast<Record *>(SutGetNList(list, index));
}

using QuoteFinder = NextFinder<CharIs<'"'>>;

// After a word such as HREF, ACTION or METHOD inside [.., end): "=" with white
// space around it and a double-quoted value. Gives the closing quote or null.
const char *QuotedValueEnd(const char *afterWord, const char *end, QuoteFinder &quotes) {
    const char *v = VlIsValidUrlKey(afterWord);
    if (!v || v >= end || *v != '"') return nullptr;
    const char *close = quotes.Next(v + 1);
    return close && close < end ? close : nullptr;
}

const char *SkipBlanks(const char *p, const char *end) {
    while (p < end && *p == ' ')
        ++p;
    return p;
}

// Pass 1: the HREF of every named anchor becomes the project URL with the
// anchor's full name as FNC parameter.
int MarkAnchors(VlHtmlDoc *doc, const char *text, FILE *out) {
    Writer w(text);
    QuoteFinder quotes;
    const bool keywords = VlAnyKeys() != 0;
    int index = 0;
    for (const char *p = text + 1; *p; ++p) {
        if (!AnchOpen(p)) continue;
        VlHtmlAnch *temp = VlHtmlAnchNew();
        VlReadAnch(temp, p);
        const bool real = temp->fullName || temp->url;
        VlHtmlAnchDelete(temp);
        if (!real) continue;

        VlHtmlAnch *record = RecordAt<VlHtmlAnch>(doc->anchors, index);
        if (keywords)
            while (record && record->isKeyword)
                record = RecordAt<VlHtmlAnch>(doc->anchors, ++index);
        if (!record) continue; // no record left: the tag stays as it is
        index++;
        if (!record->fullName) continue;

        const char *end = VlStrIStr(p + 1, "/A>", "<A ");
        if (!end) {
            w.Flush(out);
            return 1;
        }
        w.CopyTo(p + 1);
        std::string &o = w.Out();
        for (const char *q = p + 1; q < end;) {
            if (IPrefix(q, "HREF")) {
                if (const char *close = QuotedValueEnd(q + 4, end, quotes)) {
                    o += "HREF=\"";
                    o += Str(record->url);
                    o += "?FNC=";
                    o += record->fullName;
                    o += "\" ";
                    q = SkipBlanks(close + 1, end);
                    continue;
                }
            }
            o += *q++;
        }
        w.ResumeAt(end);
        p = end;
    }
    w.Finish();
    w.Flush(out);
    return 0;
}

// Pass 2: keyword attributes of named keyword anchors.
int MarkKeywords(VlHtmlDoc *doc, const char *text, FILE *out) {
    Writer w(text);
    if (!VlAnyKeys()) {
        w.Finish();
        w.Flush(out);
        return 0;
    }
    KeywordScan scan(text);
    NextFinder<CharIs<'"'>> dquotes;
    NextFinder<CharIs<'\''>> squotes;
    int index = 0;
    for (const char *p = text + 1; *p; ++p) {
        if (!IsWhite(*p) || !IsAlnum(p[1])) continue;
        VlHtmlAnch *temp = ProcessKeyWordsAt(scan, p);
        if (!temp) continue;
        VlHtmlAnchDelete(temp);

        VlHtmlAnch *record = RecordAt<VlHtmlAnch>(doc->anchors, index);
        while (record && !record->isKeyword)
            record = RecordAt<VlHtmlAnch>(doc->anchors, ++index);
        if (!record) continue;
        index++;
        if (!record->fullName || !record->urlAttr) continue;

        const char *attr = record->urlAttr;
        const char quote = KeywordQuote(attr);
        auto next = [&](const char *from) {
            return quote == '"' ? dquotes.Next(from) : squotes.Next(from);
        };
        const char *open = next(p + 1);
        const char *close = open ? next(open + 1) : nullptr;
        if (!open || !close) continue;

        w.CopyTo(p + 1);
        std::string &o = w.Out();
        const size_t n = strlen(attr);
        o += attr;
        if (attr[n - 1] == ' ') {
            o += '"';
        } else if (quote == '"') {
            o += "=\"";
        } else {
            o += "='";
        }
        o += Str(record->url);
        o += "?FNC=";
        o += record->fullName;
        o += quote;
        w.ResumeAt(close + 1);
        p = close; // the walk goes on right after the closing delimiter
    }
    w.Finish();
    w.Flush(out);
    return 0;
}

// Pass 0: ACTION and METHOD of every named form, and the hidden input that
// carries the form's full name.
int MarkForms(VlHtmlDoc *doc, const char *text, FILE *out) {
    Writer w(text);
    QuoteFinder quotes;
    struct Hidden {
        bool operator()(const char *p) const { return strncmp(p, kHiddenInput, kHiddenLen) == 0; }
    };
    NextFinder<Hidden> hiddenInputs;
    int index = 0;
    for (const char *p = text + 1; *p; ++p) {
        if (!FormOpen(p)) continue;
        const char *end = VlStrIStr(p + 1, "/FORM>", "<FORM");
        if (!end) continue;
        VlHtmlForm *temp = VlHtmlFormNew();
        VlReadForm(temp, p);
        VlHtmlFormDelete(temp);
        if (end[-1] == '<') --end; // the "<" of "</FORM>"
        const char *hidden = hiddenInputs.Next(p);
        if (hidden && hidden >= end) hidden = nullptr;
        const char *hiddenValue = hidden ? hidden + kHiddenLen : nullptr;

        VlHtmlForm *record = RecordAt<VlHtmlForm>(doc->forms, index++);
        if (!record || !record->fullName) continue;

        w.CopyTo(p);
        std::string &o = w.Out();
        bool methodWritten = false, tagEnded = false;
        // The texts are written as they stand: right after a rewritten
        // ACTION, which ends in a blank, an inserted METHOD brings its own
        // leading blank. The next marking finds the METHOD and leaves one.
        for (const char *q = p; q < end;) {
            if (q == hiddenValue) {
                o += record->fullName;
                o += '"';
                const char *close = quotes.Next(q);
                q = close && close < end ? close + 1 : end;
                continue;
            }
            if (*q == '>' && !tagEnded) {
                tagEnded = true;
                if (!methodWritten && record->method) {
                    o += " METHOD=\"";
                    o += record->method;
                    o += "\" ";
                }
            } else if (IPrefix(q, "ACTION") || IPrefix(q, "METHOD")) {
                const bool isAction = Upper(*q) == 'A';
                if (const char *close = QuotedValueEnd(q + 6, end, quotes)) {
                    o += isAction ? "ACTION=\"" : "METHOD=\"";
                    o += Str(isAction ? record->action : record->method);
                    o += "\" ";
                    if (!isAction) methodWritten = true;
                    q = SkipBlanks(close + 1, end);
                    continue;
                }
            }
            o += *q++;
        }
        if (!hidden) {
            o += kHiddenInput;
            o += record->fullName;
            o += "\"> ";
        }
        w.ResumeAt(end);
        p = end;
    }
    w.Finish();
    w.Flush(out);
    return 0;
}

} // namespace


int VlMarkupHtmlDesignTimeForms(VlHtmlDoc *doc, const char *text, FILE *out, int pass) {
    if (!doc || !text || !out) return 1;
    if (!*text) return 0;
    switch (pass) {
    case 0:
        return MarkForms(doc, text, out);
    case 1:
        return MarkAnchors(doc, text, out);
    case 2:
        return MarkKeywords(doc, text, out);
    default:
        fputs(text, out);
        return 0;
    }
}

int VlMarkupHtmlDesignTime(VlHtmlDoc *doc, const char *text, FILE *out) {
    if (!doc || !text || !out) return 1;
    if (!*text) return 0;
    Writer w(text);
    struct Hashes {
        bool operator()(const char *p) const { return p[0] == '#' && p[1] == '#'; }
    };
    NextFinder<Hashes> marks;
    int index = 0;
    for (const char *p = text + 1; *p; ++p) {
        if (FormOpen(p)) {
            VlReadForm(nullptr, p); // only passed over: its content still holds marks
            continue;
        }
        if (strncmp(p, "##Vl_", 5) != 0) continue;
        const char *close = marks.Next(p + 5);
        if (!close) continue;
        bool valid = true;
        for (const char *q = p + 5; q < close && valid; ++q)
            valid = !IsWhite(*q) && *q != '"' && *q != '\\';
        if (!valid) continue;
        VlHtmlSite *site = RecordAt<VlHtmlSite>(doc->sites, index++);
        w.CopyTo(p + 5);
        if (site && site->name) {
            w.Out() += site->name;
            w.Out() += '#';
        }
        w.ResumeAt(close + 1);
        p = close;
    }
    w.Finish();
    w.Flush(out);
    return 0;
}

} // namespace vlref
