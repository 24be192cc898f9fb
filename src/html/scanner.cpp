// The HTML scanner: a walk over a page held in memory that finds site marks,
// forms (with their INPUT, SELECT and TEXTAREA elements), anchors and keyword
// attributes, and fills a document record in page order. It recognises a
// handful of words ignoring case and takes values by simple quote rules; it
// is not an HTML parser. Every walk starts at the second character of its
// text, so a tag standing at the very start is not seen. The walks jump from
// one byte that can start something to the next (ByteFinder), read a form's
// or a tag's text in place, and copy only the values that go into records.
#include "html/scanner.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "html/keywords.h"
#include "html/store.hpp"
#include "html/textscan.hpp"
#include "util/heap.hpp"
#include "util/list.h"
#include "util/list.hpp"
#include "util/strings.h"

using namespace vlscan;

namespace {

// A copy of value kept where record keeps its strings, in place of what
// field held.
template <class Record> void Keep(Record *record, char **field, std::string_view value) {
    vlstore::SetField(record->store, field, vlstore::Copy(record->store, value));
}

// Records found by a walk are gathered here and go into their list when the
// walk ends, so a list is made at the size it needs instead of growing (each
// growth a fresh array, and large ones make malloc sort its free chunks). The
// vectors are kept from walk to walk, so their room is allocated once.
using Gathered = std::vector<void *>;

// Appends the gathered records to *list and empties records. A list made
// here holds the records at their number: in store when there is one (the
// page's lists go with it, saving a malloc and a free for every form), else
// on the heap.
void Attach(VlHtmlStore *store, SutList **list, Gathered &records) {
    if (records.empty()) return;
    if (!*list) {
        const int n = static_cast<int>(records.size());
        if (store) {
            void *room = vlstore::Take(store, sutlist::PlacedSize(n), alignof(SutList));
            *list = sutlist::Place(room, records.data(), n);
        } else {
            *list = SutNewListSize(n);
            std::memcpy((*list)->items, records.data(), records.size() * sizeof(void *));
            (*list)->count = n;
        }
    } else {
        for (void *record : records)
            SutAddList(*list, record);
    }
    records.clear();
}

// The searches that keep the lenient values of one tag text linear even when
// the tag repeats TYPE= many times without a blank.
struct BlankSearch {
    const char *end;
    const char *operator()(const char *p) const {
        static const ByteFinder blanks(" <>");
        return blanks.Find(p, end);
    }
};
struct LibFinders {
    explicit LibFinders(const char *end)
        : end(BlankSearch{end}), dquote(FinderOf('"', end)), squote(FinderOf('\'', end)) {}
    NextFinder<BlankSearch> end;
    CharFinder dquote;
    CharFinder squote;
};

// VlProcessNameValueLib within [text, end).
Value LibValue(const char *text, const char *end, LibFinders &f) {
    if (!text || text >= end) return std::nullopt;
    const char quote = (*text == '"' || *text == '\'') ? *text : '\0';
    const char *start = quote ? text + 1 : text;
    if (start >= end) return std::nullopt;
    // The value's first character is taken as it stands, so a one-character
    // value is never cut. Most values end within a few bytes: those ends are
    // found one byte at a time, farther ones with the remembered searches
    // that keep a tag linear.
    constexpr std::ptrdiff_t kNear = 16;
    const char *near = end - (start + 1) > kNear ? start + 1 + kNear : end;
    for (const char *q = start + 1; q < near; ++q)
        if (*q == ' ' || *q == '<' || *q == '>' || (quote && *q == quote))
            return std::string_view(start, static_cast<size_t>(q - start));
    const char *stop = f.end.Next(start + 1);
    if (quote) {
        const char *q = quote == '"' ? f.dquote.Next(start + 1) : f.squote.Next(start + 1);
        if (q && (!stop || q < stop)) stop = q;
    }
    if (!stop) return std::nullopt;
    return std::string_view(start, static_cast<size_t>(stop - start));
}

// What a tag text gives an element: the last NAME, TYPE and hidden form name.
struct InputValues {
    Value name, type, formName;
};

// VlReadInput on the tag text [tag, end), without making copies. NAME, TYPE
// and VALUE count only where "=" follows them (white space between), so the
// walk goes from one "=" to the next and looks at the word before it; the
// words are met in the order they stand, as a walk over them would meet them.
InputValues ReadInputValues(const char *tag, const char *end) {
    InputValues found;
    if (tag >= end) return found;
    LibFinders finders(end);
    bool hidden = false, formNameInput = false;
    const char *first = tag + 1; // where words may begin
    for (const char *equal = FindByte(first, end, '='); equal != nullptr;
         equal = FindByte(equal + 1, end, '=')) {
        const char *last = equal - 1; // the word's last byte
        while (last >= first && IsWhite(*last))
            --last;
        if (last - first < 3) continue;
        if (const char *p = last - 3; IPrefixOf<"NAME">(p, end)) {
            Value value = QuotedAfterEqual(p + 4, end);
            if (!value) continue;
            if (EqualsIgnoringCase(*value, "VlFormName")) formNameInput = true;
            found.name = value;
        } else if (IPrefixOf<"TYPE">(p, end)) {
            Value value = LibValue(SkipWhiteAndEqual(p + 4, end), end, finders);
            if (!value) continue;
            if (EqualsIgnoringCase(*value, "hidden")) hidden = true;
            found.type = value;
        } else if (hidden && formNameInput && last - first >= 4 && IPrefixOf<"VALUE">(p - 1, end)) {
            if (Value value = QuotedAfterEqual(p + 4, end)) found.formName = value;
        }
    }
    return found;
}

// A new element of the form with what its tag text gave (type, when given,
// in place of the tag's TYPE); the hidden form name goes to the form.
void AddElement(VlHtmlForm *form, Gathered &elements, const InputValues &values, const char *type) {
    auto *element = vlstore::NewRecord<VlHtmlFormElement>(form->store);
    elements.push_back(element);
    if (values.name) Keep(element, &element->name, *values.name);
    if (type)
        Keep(element, &element->type, type);
    else if (values.type)
        Keep(element, &element->type, *values.type);
    if (values.formName) Keep(form, &form->fullName, *values.formName);
}

// Reads a SELECT or TEXTAREA element whose text runs to its closing tag within
// the form text ending at end, and answers where the scan goes on (null when
// the closing tag is missing).
template <Literal Open, Literal Close, class Ends, bool Wide>
const char *ReadBlockElement(VlHtmlForm *form, Gathered &elements, const char *tag, const char *end,
                             const char *readable, const char *type) {
    const char *stop = FindTagOf<Close, Open, Wide>(tag + 1, Ends{end}, readable);
    if (!stop) return nullptr;
    if (form) AddElement(form, elements, ReadInputValues(tag + sizeof Open.text - 1, stop), type);
    return stop;
}

// VlProcessForm on the form text [text, end) of a page readable up to
// readable; a null form is only read. Wide: with the thirty-two-byte tests.
template <bool Wide = false>
void ProcessFormText(VlHtmlForm *form, const char *text, const char *end, const char *readable) {
    if (text >= end) return;
    // INPUT, SELECT, TEXTAREA, ACTION and METHOD.
    using FormWords = Words<'<', 'i', '<', 's', '<', 't', 'a', 'c', 'm', 'e'>;
    const WordStarts<FormWords> words{end};
    MarkCursor<WordStarts<FormWords>, Wide> candidates(words, end, readable);
    CharFinder tagEnd = FinderOf('>', end);
    Value action, method;
    thread_local Gathered elements;
    elements.clear();
    for (const char *p = text + 1; (p = candidates.Next(p)) != nullptr; ++p) {
        if (*p != '<') {
            // ACTION and METHOD count wherever they stand in the form: the last wins.
            if (IPrefixOf<"ACTION">(p, end)) {
                if (Value value = QuotedAfterEqual(p + 6, end)) action = value;
            } else if (IPrefixOf<"METHOD">(p, end)) {
                if (Value value = QuotedAfterEqual(p + 6, end)) method = value;
            }
        } else if (IPrefixOf<"<INPUT">(p, end)) {
            const char *gt = tagEnd.Next(p + 1);
            if (!gt) continue;
            // The tag text keeps its ">", so an unquoted last value still ends.
            if (form) AddElement(form, elements, ReadInputValues(p + 6, gt + 1), nullptr);
            p = gt;
        } else if (IPrefixOf<"<SELECT">(p, end)) {
            using SelectEnds = WordStarts<Words<'/', 's', '<', 's'>>;
            if (const char *stop = ReadBlockElement<"<SELECT", "/SELECT>", SelectEnds, Wide>(
                    form, elements, p, end, readable, "SELECT"))
                p = stop;
        } else if (IPrefixOf<"<TEXTAREA">(p, end)) {
            using TextareaEnds = WordStarts<Words<'/', 't', '<', 't'>>;
            if (const char *stop = ReadBlockElement<"<TEXTAREA", "/TEXTAREA>", TextareaEnds, Wide>(
                    form, elements, p, end, readable, "TEXTAREA"))
                p = stop;
        }
    }
    if (!form) return;
    Attach(form->store, &form->elements, elements);
    if (action) Keep(form, &form->action, *action);
    if (method) Keep(form, &form->method, *method);
}

// VlProcessAnch on the anchor text [text, end), without making copies. Wide:
// with the thirty-two-byte tests.
template <bool Wide = false>
AnchValues AnchValuesIn(const char *text, const char *end, const char *readable) {
    AnchValues found;
    if (text >= end) return found;
    const WordStarts<Words<'h', 'r'>> words{end};
    MarkCursor<WordStarts<Words<'h', 'r'>>, Wide> candidates(words, end, readable);
    bool sawHref = false;
    for (const char *p = text + 1; (p = candidates.Next(p)) != nullptr; ++p) {
        if (!IPrefixOf<"HREF">(p, end)) continue;
        sawHref = true;
        const char *q = p + 4;
        while (q < end && IsWhite(*q))
            ++q;
        if (q >= end) return found.result = 1, found;
        if (*q != '=') continue;
        ++q;
        while (q < end && IsWhite(*q))
            ++q;
        if (q >= end) return found.result = 1, found;
        if (*q != '"') continue;
        Value value = QuotedValue(q, end);
        if (!value) continue;
        const char *mark = FindByte(value->data(), value->data() + value->size(), '?');
        const size_t question =
            mark ? static_cast<size_t>(mark - value->data()) : std::string_view::npos;
        if (question == std::string_view::npos) {
            found.url = value;
            return found.result = 1, found;
        }
        if (value->substr(question + 1).starts_with("FNC=")) {
            // Named: the activator's full name follows; a later HREF may override.
            found.fullName = value->substr(question + 5);
            found.url = value->substr(0, question);
            continue;
        }
        found.url = value;
        return found.result = 1, found;
    }
    found.result = sawHref ? 1 : 0;
    return found;
}

// The text of an anchor starts right after "<A", with the blank that follows
// it, so an HREF standing first in the tag is seen by the scan from the
// second character.
template <bool Wide = false>
AnchValues AnchorValues(const char *cursor, const char *end, const char *readable) {
    return AnchValuesIn<Wide>(cursor + 2, end, readable);
}

} // namespace

AnchValues vlscan::ReadAnchValues(const char *text, const char *end, const char *readable) {
    return AnchValuesIn(text, end, readable);
}

AnchValues vlscan::ReadAnchor(const char *cursor, const char *end, const char *readable) {
    return AnchorValues(cursor, end, readable);
}

namespace {

void ApplyAnch(VlHtmlAnch *anchor, const AnchValues &values) {
    if (values.fullName) Keep(anchor, &anchor->fullName, *values.fullName);
    if (values.url) Keep(anchor, &anchor->url, *values.url);
}

// The places where the page walk looks: "<F", "/F", "<A", "/A", "##" and (when
// keywords are loaded) white space before a keyword. The block tests share
// their loads between the tags and the keywords and let through a few
// places besides keyword marks (see KeywordMarks::Likely): the walk passes
// over a place that is not white space, and the keyword recogniser, which
// compares the keywords themselves, over the others.
struct PageMarks {
    static constexpr int kAhead = 2;
    using Tags = Words<'<', 'f', '/', 'f', '<', 'a', '/', 'a', '#', '#'>;

    PageMarks(const char *pageEnd, const KeywordMarks &keywordMarks, bool anyKeywords)
        : end(pageEnd), keywords(keywordMarks), withKeywords(anyKeywords) {
#if defined(__SSE2__)
        bytefind::Bytes held[4];
        quickKeywords = withKeywords && keywords.withSeconds &&
                        keywords.firsts.TwoFoldedProbes(held) &&
                        keywords.seconds.TwoFoldedProbes(held + 2);
        for (int k = 0; quickKeywords && k < 4; k++) {
            std::memcpy(probes[k], &held[k], 16);
            std::memcpy(probes[k] + 16, &held[k], 16);
        }
#endif
    }
    bool At(const char *p) const {
        return Tags::At(p, end) || (withKeywords && keywords.At(p));
    }
#if defined(__SSE2__)
    unsigned Block(const char *p) const {
        using namespace bytefind;
        const Bytes v = Load(p), next = Load(p + 1);
        const Bytes caseBit = _mm_set1_epi8(0x20);
        const Bytes foldedNext = _mm_or_si128(next, caseBit);
        // The tags: "<" or "/" before F or A, and "##".
        const Bytes lessOrSlash = Or(Is(v, '<'), Is(v, '/'));
        const Bytes formOrAnchor = Or(Is(foldedNext, 'f'), Is(foldedNext, 'a'));
        Bytes hit = Or(And(lessOrSlash, formOrAnchor), And(Is(v, '#'), Is(next, '#')));
        if (quickKeywords) {
            // KeywordMarks::Likely with the keywords' first and second bytes at hand.
            const Bytes first =
                Or(_mm_cmpeq_epi8(foldedNext, Probe(0)), _mm_cmpeq_epi8(foldedNext, Probe(1)));
            const Bytes foldedAfter = _mm_or_si128(Load(p + 2), caseBit);
            const Bytes second =
                Or(_mm_cmpeq_epi8(foldedAfter, Probe(2)), _mm_cmpeq_epi8(foldedAfter, Probe(3)));
            hit = Or(hit, And(And(UpToBlank(v), first), second));
        } else if (withKeywords) {
            hit = Or(hit, keywords.Likely(v, foldedNext, p));
        }
        return Bits(hit);
    }
    bytefind::Bytes Probe(int k) const {
        return _mm_load_si128(reinterpret_cast<const __m128i *>(probes[k]));
    }
#endif
#if VELMORA_WIDE_BLOCKS
    // Block on thirty-two places.
    VELMORA_WIDE unsigned WideBlock(const char *p) const {
        using namespace bytefind;
        const WideBytes v = LoadWide(p), next = LoadWide(p + 1);
        const WideBytes foldedNext = Folded(next);
        const WideBytes lessOrSlash = Or(Is<'<'>(v), Is<'/'>(v));
        const WideBytes formOrAnchor = Or(Is<'f'>(foldedNext), Is<'a'>(foldedNext));
        const WideBytes tags = Or(And(lessOrSlash, formOrAnchor), And(Is<'#'>(v), Is<'#'>(next)));
        if (quickKeywords) {
            const WideBytes first =
                Or(Is(foldedNext, LoadWide(probes[0])), Is(foldedNext, LoadWide(probes[1])));
            const WideBytes foldedAfter = Folded(LoadWide(p + 2));
            const WideBytes second =
                Or(Is(foldedAfter, LoadWide(probes[2])), Is(foldedAfter, LoadWide(probes[3])));
            return Bits(Or(tags, And(And(UpToBlank(v), first), second)));
        }
        if (!withKeywords) return Bits(tags);
        // Other keyword lists: their sixteen-byte test twice.
        return Bits(tags) | Bits(keywords.LikelyAt(p)) | Bits(keywords.LikelyAt(p + 16)) << 16;
    }
#endif

    const char *end;
    const KeywordMarks &keywords;
    bool withKeywords;
#if defined(__SSE2__)
    // The keywords' first and second bytes as two probes each, when they fit:
    // each probe's sixteen bytes twice, for either width of block.
    bool quickKeywords = false;
    alignas(32) char probes[4][32]{};
#endif
};

const char *EndOf(const char *text) {
    return text + strlen(text);
}

// The readers of a form's and of an anchor's text that a page walk with the
// given block width calls.
template <bool Wide> struct TextReaders {
    static void Form(VlHtmlForm *form, const char *text, const char *end, const char *readable) {
        ProcessFormText(form, text, end, readable);
    }
    static AnchValues Anchor(const char *cursor, const char *end, const char *readable) {
        return AnchorValues(cursor, end, readable);
    }
};
#if VELMORA_WIDE_BLOCKS
// Each wide reader is one function with everything it calls inlined
// (flatten), so its tests are built for AVX2 there and nowhere else. They
// stay apart from the walk (noinline): one function holding them all ran
// slower than the sixteen-byte walk.
template <> struct TextReaders<true> {
    VELMORA_WIDE [[gnu::flatten, gnu::noinline]] static void
    Form(VlHtmlForm *form, const char *text, const char *end, const char *readable) {
        ProcessFormText<true>(form, text, end, readable);
    }
    VELMORA_WIDE [[gnu::flatten, gnu::noinline]] static AnchValues
    Anchor(const char *cursor, const char *end, const char *readable) {
        return AnchorValues<true>(cursor, end, readable);
    }
};
#endif

// Walks the page [text, pageEnd) and fills doc (its store made) with the
// page's sites, forms and anchors. Wide: with the thirty-two-byte tests.
template <bool Wide> void WalkPage(VlHtmlDoc *doc, const char *text, const char *pageEnd) {
    VlHtmlStore *store = doc->store;
    KeywordScan scan(text, pageEnd);
    // Forms, anchors and site marks.
    const PageMarks marks(pageEnd, scan.marks, VlAnyKeys() != 0);
    MarkCursor<PageMarks, Wide> candidates(marks, pageEnd);
    NextFinder<HashesSearch> siteEnd(HashesSearch{pageEnd});
    // A form ends at the first "<FORM" or "/FORM>" after its own "<FORM",
    // when that is the close, and an anchor at the first "<A" or "/A>" after
    // its "<A": the walk keeps the last opening until it meets the next mark,
    // and reads the form or the anchor then. The marks count inside a site
    // name too, where the walk finds nothing else. An anchor's place in the
    // list is taken when it opens (a keyword attribute inside it comes after
    // it) and given up when it is not kept.
    const char *openForm = nullptr, *openAnchor = nullptr;
    size_t anchorPlace = 0;
    // The last anchor mark met opens one (places lie inside), counting a mark
    // at the first character, which opens no anchor of the page.
    bool anchorMarkOpens = AnchOpen(text, pageEnd);
    const char *siteUntil = text; // the last site name read, up to its "##"
    thread_local Gathered sites, forms, anchors;
    sites.clear();
    forms.clear();
    anchors.clear();

    for (const char *p = text + 1; (p = candidates.Next(p)) != nullptr; ++p) {
        const bool inSiteName = p <= siteUntil;
        if (*p == '#') {
            if (inSiteName || pageEnd - p < 5 || std::memcmp(p, "##Vl_", 5) != 0) continue;
            const char *close = siteEnd.Next(p + 5);
            if (!close || !ValidSiteName(p + 5, close)) continue;
            auto *site = vlstore::NewRecord<VlHtmlSite>(store);
            site->name = vlstore::Copy(store, {p + 5, static_cast<size_t>(close - p - 5)});
            sites.push_back(site);
            siteUntil = close;
        } else if (*p == '/') {
            if (FormClose(p, pageEnd)) {
                if (!openForm) continue;
                auto *form = vlstore::NewRecord<VlHtmlForm>(store);
                forms.push_back(form);
                TextReaders<Wide>::Form(form, openForm + strlen("<FORM"), p, pageEnd);
                openForm = nullptr;
            } else if (AnchClose(p, pageEnd)) {
                anchorMarkOpens = false;
                if (!openAnchor) continue;
                AnchValues values = TextReaders<Wide>::Anchor(openAnchor, p, pageEnd);
                openAnchor = nullptr;
                // Kept only when it got a full name or a URL.
                if (!values.fullName && !values.url) continue;
                auto *anchor = vlstore::NewRecord<VlHtmlAnch>(store);
                ApplyAnch(anchor, values);
                anchors[anchorPlace] = anchor;
            }
        } else if (*p == '<') {
            if (FormOpen(p, pageEnd)) openForm = inSiteName ? nullptr : p;
            // The form's body is walked on: anchors in a form are anchors too.
            // (An anchor never opens inside a site name: white space follows
            // its "<A", and a site name holds none.)
            if (AnchOpen(p, pageEnd)) {
                anchorMarkOpens = true;
                openAnchor = p;
                anchorPlace = anchors.size();
                anchors.push_back(nullptr);
            }
        } else if (inSiteName || !IsWhite(*p) ||
                   (anchorMarkOpens && scan.hrefFirst && IPrefixOf<"HREF">(p + 1, pageEnd))) {
            // Passed over: the quick test also gives a few bytes below the
            // blank that are not white space (the rest of a keyword mark is
            // the keyword's own to check), and an anchor's own HREF is read
            // with the anchor.
            continue;
        } else if (std::optional<KeywordHit> hit = RecognizeKeyword(
                       scan, p,
                       anchorMarkOpens ? AnchorMarks::kLastOpens : AnchorMarks::kLastCloses)) {
            // White space before a keyword attribute.
            anchors.push_back(KeywordAnchor(*hit, store));
        }
    }
    std::erase(anchors, nullptr); // the places of anchors not kept
    Attach(store, &doc->sites, sites);
    Attach(store, &doc->forms, forms);
    Attach(store, &doc->anchors, anchors);
}

#if VELMORA_WIDE_BLOCKS
// The walk with the thirty-two-byte tests, entered only on a processor with
// AVX2. Every function it calls whose body is at hand, but the readers, is
// inlined into it (flatten), so its tests are built for AVX2 here only.
VELMORA_WIDE [[gnu::flatten]] void WalkPageWide(VlHtmlDoc *doc, const char *text,
                                                const char *pageEnd) {
    WalkPage<true>(doc, text, pageEnd);
}
#endif

} // namespace

VlHtmlDoc *vlscan::ReadDesignTime(const char *text, bool wideBlocks) {
    if (!text) return nullptr;
    VlHtmlDoc *doc = VlHtmlNew();
    if (!*text) return doc;
    const char *pageEnd = EndOf(text);
    // The records of an ordinary page and their strings take a little more
    // room than the page; a page dense with them grows its store.
    doc->store = vlstore::StoreNew(static_cast<size_t>(pageEnd - text) * 2);
#if VELMORA_WIDE_BLOCKS
    if (wideBlocks && bytefind::HasWideBlocks()) {
        WalkPageWide(doc, text, pageEnd);
        return doc;
    }
#endif
    WalkPage<false>(doc, text, pageEnd);
    return doc;
}

extern "C" {

char *VlProcessNameValue(const char *text) {
    if (!text) return nullptr;
    Value value = QuotedValue(text, EndOf(text));
    return value ? VlHeapCopy(*value) : nullptr;
}

char *VlProcessNameValueLib(const char *text) {
    if (!text) return nullptr;
    const char *end = EndOf(text);
    LibFinders f(end);
    Value value = LibValue(text, end, f);
    return value ? VlHeapCopy(*value) : nullptr;
}

int VlReadInput(VlHtmlFormElement *element, const char *tagText) {
    if (!tagText) return 1;
    const char *end = EndOf(tagText);
    InputValues values = ReadInputValues(tagText, end);
    if (element) {
        if (values.name) Keep(element, &element->name, *values.name);
        if (values.type) Keep(element, &element->type, *values.type);
        if (values.formName) Keep(element, &element->formName, *values.formName);
    }
    return 0;
}

int VlProcessForm(VlHtmlForm *form, const char *formText) {
    if (!formText || !*formText) return 1;
    const char *end = EndOf(formText);
    ProcessFormText(form, formText, end, end);
    return 0;
}

int VlReadForm(VlHtmlForm *form, const char *cursor) {
    if (!cursor || !*cursor) return 1;
    const char *textEnd = EndOf(cursor);
    const char *end = FormEnd(cursor + 1, textEnd);
    if (end) ProcessFormText(form, cursor + strlen("<FORM"), end, textEnd);
    return 0;
}

int VlProcessAnch(VlHtmlAnch *anchor, const char *anchText) {
    if (!anchText) return 0;
    const char *end = EndOf(anchText);
    AnchValues values = ReadAnchValues(anchText, end, end);
    if (anchor) ApplyAnch(anchor, values);
    return values.result;
}

int VlReadAnch(VlHtmlAnch *anchor, const char *cursor) {
    if (!cursor || !*cursor) return 1;
    const char *textEnd = EndOf(cursor);
    const char *end = AnchorEnd(cursor, textEnd);
    if (end && anchor) ApplyAnch(anchor, ReadAnchor(cursor, end, textEnd));
    return 0;
}

VlHtmlDoc *VlReadHtmlDesignTime(const char *text) {
    return vlscan::ReadDesignTime(text, true);
}

} // extern "C"
