// Design-time markup: copies a page's text to a stream and rewrites only the
// attribute values and marks that tie its forms, anchors, keyword attributes
// and sites to the names the document record holds, so the generated program
// can tell which activator a request is for. Each pass matches the n-th tag of
// its kind in the text with the n-th record of the document; it jumps from one
// byte that can start its kind of tag to the next and copies the text between
// in runs.
#include "html/markup.h"
#include "html/markup_text.hpp"

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "html/keywords.h"
#include "html/store.hpp"
#include "html/textscan.hpp"
#include "util/list.h"
#include "util/shortcopy.hpp"

using namespace vlscan;

namespace {

constexpr std::string_view kHiddenInput = "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"";

// A string field of a record (null: empty), its length known without a count
// when the record's store holds it.
template <class Record> std::string_view Text(const Record *record, const char *field) {
    return vlstore::Text(record->store, field);
}

// The output of one pass: copied runs of the text and the rewrites between
// them. Nothing is written until the first rewrite, so a pass that rewrites
// nothing can leave the text where it is instead of copying it.
class Writer {
  public:
    Writer(const char *text, const char *end, std::string &out, bool copyUnchanged)
        : text_(text), run_(text), end_(end), out_(out), copyUnchanged_(copyUnchanged) {}
    void CopyTo(const char *upTo) {
        Start();
        out_.append(run_, static_cast<size_t>(upTo - run_));
        run_ = upTo;
    }
    void ResumeAt(const char *at) {
        Start();
        run_ = at;
    }
    std::string &Out() { return out_; }
    void Finish() {
        if (started_ || copyUnchanged_) CopyTo(end_);
    }
    bool Rewrote() const { return started_; }

  private:
    void Start() {
        if (started_) return;
        started_ = true;
        // Rewrites lengthen the page a little: room for a quarter more.
        const auto size = static_cast<size_t>(end_ - text_);
        out_.reserve(out_.size() + size + size / 4 + 4096);
    }

    const char *text_;
    const char *run_;
    const char *end_;
    std::string &out_;
    bool copyUnchanged_;
    bool started_ = false;
};

// SutGetNList, read in place: it is asked once for every tag a pass rewrites.
template <class Record> Record *RecordAt(const SutList *list, int index) {
    return list && index >= 0 && index < list->count ? static_cast<Record *>(list->items[index])
                                                     : nullptr;
}

// Appends short pieces to o with one growth of o instead of one a piece.
template <class... Pieces> void Append(std::string &o, Pieces... pieces) {
    const size_t at = o.size();
    o.resize(at + (std::string_view(pieces).size() + ...));
    char *to = o.data() + at;
    ((VlCopyShort(to, std::string_view(pieces).data(), std::string_view(pieces).size()),
      to += std::string_view(pieces).size()),
     ...);
}

// After a word such as HREF, ACTION or METHOD inside [.., stop) of a text
// ending at end: "=" with white space around it and a double-quoted value.
// Gives the closing quote or null.
const char *QuotedValueEnd(const char *afterWord, const char *stop, const char *end,
                           CharFinder &quotes) {
    const char *v = SkipWhiteAndEqual(afterWord, end);
    if (!v || v >= stop || *v != '"') return nullptr;
    const char *close = quotes.Next(v + 1);
    return close && close < stop ? close : nullptr;
}

// The NUL-terminated s holds exactly text (a few bytes: no library call).
bool IsText(const char *s, std::string_view text) {
    for (char c : text)
        if (*s++ != c) return false;
    return *s == '\0';
}

const char *SkipBlanks(const char *p, const char *end) {
    while (p < end && *p == ' ')
        ++p;
    return p;
}

const char *NextByte(const char *p, const char *end, char c) {
    return ByteSearch{c, end}(p);
}

// Pass 1: the HREF of every named anchor becomes the project URL with the
// anchor's full name as FNC parameter.
int MarkAnchors(VlHtmlDoc *doc, const char *text, const char *textEnd, Writer &w) {
    CharFinder quotes = FinderOf('"', textEnd);
    const WordStarts<Words<'<', 'a'>> anchorOpens{textEnd};
    MarkCursor<WordStarts<Words<'<', 'a'>>> tags(anchorOpens, textEnd);
    const bool keywords = VlAnyKeys() != 0;
    AnchorEnds anchorEnds(textEnd);
    int index = 0;
    for (const char *p = text + 1; (p = tags.Next(p)) != nullptr; ++p) {
        if (!AnchOpen(p, textEnd)) continue;
        // Only anchors the scanner keeps (with a name or a URL) have records.
        const char *anchEnd = anchorEnds.From(p + 1);
        if (!anchEnd) continue;
        AnchValues values = ReadAnchor(p, anchEnd, textEnd);
        if (!values.fullName && !values.url) continue;

        VlHtmlAnch *record = RecordAt<VlHtmlAnch>(doc->anchors, index);
        if (keywords)
            while (record && record->isKeyword)
                record = RecordAt<VlHtmlAnch>(doc->anchors, ++index);
        if (!record) continue; // no record left: the tag stays as it is
        index++;
        if (!record->fullName) continue;

        w.CopyTo(p + 1);
        std::string &o = w.Out();
        const WordStarts<Words<'h', 'r'>> words{anchEnd};
        MarkCursor<WordStarts<Words<'h', 'r'>>> hrefs(words, anchEnd, textEnd);
        const char *q = p + 1;
        while (const char *h = hrefs.Next(q)) {
            o.append(q, static_cast<size_t>(h - q));
            q = h;
            if (IPrefixOf<"HREF">(q, textEnd)) {
                if (const char *close = QuotedValueEnd(q + 4, anchEnd, textEnd, quotes)) {
                    Append(o, "HREF=\"", Text(record, record->url),
                           "?FNC=", Text(record, record->fullName), "\" ");
                    q = SkipBlanks(close + 1, anchEnd);
                    continue;
                }
            }
            o += *q++;
        }
        o.append(q, static_cast<size_t>(anchEnd - q));
        w.ResumeAt(anchEnd);
        p = anchEnd;
    }
    w.Finish();
    return 0;
}

// Pass 2: keyword attributes of named keyword anchors (Pass runs it only with
// keywords loaded).
int MarkKeywords(VlHtmlDoc *doc, const char *text, const char *end, Writer &w) {
    KeywordScan scan(text, end);
    CharFinder dquotes = FinderOf('"', end);
    CharFinder squotes = FinderOf('\'', end);
    int index = 0;
    // A keyword attribute begins after white space, with a keyword's first byte.
    MarkCursor<KeywordMarks> candidates(scan.marks, end);
    for (const char *p = text + 1; (p = candidates.Next(p)) != nullptr; ++p) {
        const std::optional<KeywordHit> hit = RecognizeKeyword(scan, p);
        if (!hit) continue;

        VlHtmlAnch *record = RecordAt<VlHtmlAnch>(doc->anchors, index);
        while (record && !record->isKeyword)
            record = RecordAt<VlHtmlAnch>(doc->anchors, ++index);
        if (!record) continue;
        index++;
        if (!record->fullName || !record->urlAttr) continue;

        // The record's attribute is, as a rule, the keyword just recognised.
        const Keyword &keyword = *hit->keyword;
        const bool sameAttr = IsText(record->urlAttr, {keyword.text, keyword.length});
        const std::string_view attr =
            sameAttr ? std::string_view(record->urlAttr, keyword.length) : record->urlAttr;
        const char quote = sameAttr ? keyword.quote : KeywordQuote(attr);
        const char *close = nullptr;
        if (quote == keyword.quote) {
            // Only the name, white space and "=" stand before the value's
            // opening delimiter: the hit's value lies between the delimiters.
            close = hit->url.data() + hit->url.size();
        } else {
            auto next = [&](const char *at) {
                return quote == '"' ? dquotes.Next(at) : squotes.Next(at);
            };
            const char *open = next(p + 1);
            close = open ? next(open + 1) : nullptr;
            if (!close) continue;
        }

        w.CopyTo(p + 1);
        const std::string_view opening = attr.ends_with(' ') ? "\"" : quote == '"' ? "=\"" : "='";
        Append(w.Out(), attr, opening, Text(record, record->url),
               "?FNC=", Text(record, record->fullName), std::string_view(&quote, 1));
        w.ResumeAt(close + 1);
        p = close; // the walk goes on right after the closing delimiter
    }
    w.Finish();
    return 0;
}

// The existing hidden-name inputs, found in page order.
struct HiddenSearch {
    const char *end;
    const char *operator()(const char *p) const {
        for (; (p = NextByte(p, end, '<')) != nullptr; ++p)
            if (static_cast<size_t>(end - p) >= kHiddenInput.size() && p[1] == 'I' &&
                std::memcmp(p, kHiddenInput.data(), kHiddenInput.size()) == 0)
                return p;
        return nullptr;
    }
};

// Pass 0: ACTION and METHOD of every named form, and the hidden input that
// carries the form's full name.
int MarkForms(VlHtmlDoc *doc, const char *text, const char *end, Writer &w) {
    CharFinder quotes = FinderOf('"', end);
    NextFinder<HiddenSearch> hiddenInputs(HiddenSearch{end});
    const WordStarts<Words<'<', 'f'>> formOpens{end};
    MarkCursor<WordStarts<Words<'<', 'f'>>> tags(formOpens, end);
    FormEnds formEnds(end);
    int index = 0;
    for (const char *p = text + 1; (p = tags.Next(p)) != nullptr; ++p) {
        if (!FormOpen(p, end)) continue;
        const char *formEnd = formEnds.From(p + 1);
        if (!formEnd) continue;
        if (formEnd[-1] == '<') --formEnd; // the "<" of "</FORM>"
        const char *hidden = hiddenInputs.Next(p);
        if (hidden && hidden >= formEnd) hidden = nullptr;
        const char *hiddenValue = hidden ? hidden + kHiddenInput.size() : nullptr;

        VlHtmlForm *record = RecordAt<VlHtmlForm>(doc->forms, index++);
        if (!record || !record->fullName) continue;

        w.CopyTo(p);
        std::string &o = w.Out();
        bool methodWritten = false, tagEnded = false;
        // The texts are written as they stand: right after a rewritten
        // ACTION, which ends in a blank, an inserted METHOD brings its own
        // leading blank. The next marking finds the METHOD and leaves one.
        // Where a rewrite can begin: the tag's ">" (until it is met), ACTION
        // and METHOD.
        using TagWords = Words<'>', '\0', 'a', 'c', 'm', 'e'>;
        using BodyWords = Words<'a', 'c', 'm', 'e'>;
        const WordStarts<TagWords> tagWords{formEnd};
        const WordStarts<BodyWords> bodyWords{formEnd};
        MarkCursor<WordStarts<TagWords>> inTag(tagWords, formEnd, end);
        MarkCursor<WordStarts<BodyWords>> inBody(bodyWords, formEnd, end);
        for (const char *q = p; q < formEnd;) {
            // Copy the run up to the next place where a rewrite can begin.
            const char *next = tagEnded ? inBody.Next(q) : inTag.Next(q);
            if (!next) next = formEnd;
            if (hiddenValue && hiddenValue >= q && hiddenValue < next) next = hiddenValue;
            if (next > q) {
                o.append(q, static_cast<size_t>(next - q));
                q = next;
                continue;
            }
            if (q == hiddenValue) {
                o += Text(record, record->fullName);
                o += '"';
                const char *close = quotes.Next(q);
                q = close && close < formEnd ? close + 1 : formEnd;
                continue;
            }
            if (*q == '>' && !tagEnded) {
                tagEnded = true;
                if (!methodWritten && record->method) {
                    o += " METHOD=\"";
                    o += Text(record, record->method);
                    o += "\" ";
                }
            } else if (IPrefixOf<"ACTION">(q, end) || IPrefixOf<"METHOD">(q, end)) {
                const bool isAction = Upper(*q) == 'A';
                if (const char *close = QuotedValueEnd(q + 6, formEnd, end, quotes)) {
                    o += isAction ? "ACTION=\"" : "METHOD=\"";
                    o += Text(record, isAction ? record->action : record->method);
                    o += "\" ";
                    if (!isAction) methodWritten = true;
                    q = SkipBlanks(close + 1, formEnd);
                    continue;
                }
            }
            o += *q++;
        }
        if (!hidden) {
            o += kHiddenInput;
            o += Text(record, record->fullName);
            o += "\"> ";
        }
        w.ResumeAt(formEnd);
        p = formEnd;
    }
    w.Finish();
    return 0;
}

int MarkSites(VlHtmlDoc *doc, const char *text, const char *end, Writer &w) {
    NextFinder<HashesSearch> marks(HashesSearch{end});
    int index = 0;
    // Forms are only passed over: their content still holds marks.
    for (const char *p = text + 1; (p = NextByte(p, end, '#')) != nullptr; ++p) {
        if (end - p < 5 || std::memcmp(p, "##Vl_", 5) != 0) continue;
        const char *close = marks.Next(p + 5);
        if (!close || !ValidSiteName(p + 5, close)) continue;
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
    return 0;
}

// The form and keyword passes rewrite only the tags whose record holds a full
// name; without one they would copy the text as it is, so they are not run
// (the form pass reads what the keyword pass wrote, which may be several
// times the page). The anchor pass finds out for itself: its walk over the
// text costs less than one over every anchor record.
bool HasNamedRecord(const VlHtmlDoc *doc, int pass) {
    auto any = [](const SutList *list, auto named) {
        for (int i = 0; list && i < list->count; i++)
            if (named(list->items[i])) return true;
        return false;
    };
    switch (pass) {
    case 0:
        return any(doc->forms, [](void *r) { return r && static_cast<VlHtmlForm *>(r)->fullName; });
    case 2:
        return VlAnyKeys() && any(doc->anchors, [](void *r) {
                   const auto *a = static_cast<VlHtmlAnch *>(r);
                   return a && a->isKeyword && a->fullName && a->urlAttr;
               });
    default:
        return true;
    }
}

int Pass(VlHtmlDoc *doc, const char *text, const char *end, int pass, Writer &w) {
    if (!HasNamedRecord(doc, pass)) {
        w.Finish();
        return 0;
    }
    switch (pass) {
    case -1:
        return MarkSites(doc, text, end, w);
    case 0:
        return MarkForms(doc, text, end, w);
    case 1:
        return MarkAnchors(doc, text, end, w);
    case 2:
        return MarkKeywords(doc, text, end, w);
    default:
        w.Finish();
        return 0;
    }
}

// A pass over NUL-terminated text written to a stream.
int PassToStream(VlHtmlDoc *doc, const char *text, FILE *stream, int pass) {
    if (!doc || !text || !stream) return 1;
    if (!*text) return 0;
    std::string out;
    const char *end = text + strlen(text);
    Writer w(text, end, out, true);
    const int result = Pass(doc, text, end, pass, w);
    fwrite(out.data(), 1, out.size(), stream);
    return result;
}

} // namespace

void vlmarkup::RunPass(VlHtmlDoc *doc, std::string &text, std::string &spare, int pass) {
    if (!doc || text.empty()) return;
    spare.clear();
    Writer w(text.data(), text.data() + text.size(), spare, false);
    Pass(doc, text.data(), text.data() + text.size(), pass, w);
    if (w.Rewrote()) text.swap(spare);
}

extern "C" {

int VlMarkupHtmlDesignTimeForms(VlHtmlDoc *doc, const char *text, FILE *out, int pass) {
    return PassToStream(doc, text, out, pass < 0 ? 3 : pass);
}

int VlMarkupHtmlDesignTime(VlHtmlDoc *doc, const char *text, FILE *out) {
    return PassToStream(doc, text, out, -1);
}

} // extern "C"
