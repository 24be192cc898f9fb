// C++ helpers shared by the keyword recogniser, the scanner and the markup (not
// part of the C interface). Page text is read in place between a start and an
// end pointer, so a form's or a tag's text needs no copy: case-insensitive
// prefix tests and value readers that never pass the end, finders that
// remember their last answer so that a walk asking "where is the next X?" at
// ever later places stays linear in the page, the "inside an anchor / a form"
// trackers, and the keyword table that a walk builds once.
#ifndef VELMORA_HTML_TEXTSCAN_HPP
#define VELMORA_HTML_TEXTSCAN_HPP

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "html/document.h"
#include "util/bytefind.hpp"

namespace vlscan {

// A value read from page text, or none: a view whose data is null when there
// is none (a value read from text, even an empty one, points into it). Two
// words, so it travels in registers; a std::optional of a view goes through
// memory, and reading it back right after its flag byte was written stalls
// the processor on every value of a page.
class Value {
  public:
    Value() = default;
    Value(std::nullopt_t) {}
    Value(std::string_view view) : view_(view) {}
    explicit operator bool() const { return view_.data() != nullptr; }
    const std::string_view &operator*() const { return view_; }
    const std::string_view *operator->() const { return &view_; }

  private:
    std::string_view view_;
};

// The C library's space class in the "C" locale.
inline bool IsWhite(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
constexpr bool IsAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
inline bool IsAlnum(char c) {
    return (c >= '0' && c <= '9') || IsAlpha(c);
}
// Case folding of the ASCII letters only: tag and attribute names are ASCII.
inline char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
inline char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// s begins with pat, ignoring case, within [s, end).
inline bool IPrefix(const char *s, const char *end, std::string_view pat) {
    if (end - s < static_cast<std::ptrdiff_t>(pat.size())) return false;
    for (size_t i = 0; i < pat.size(); i++)
        if (Upper(s[i]) != Upper(pat[i])) return false;
    return true;
}
// A word known when the program is built, for IPrefixOf.
template <size_t N> struct Literal {
    char text[N]; // with its terminating NUL
    consteval Literal(const char (&s)[N]) {
        for (size_t i = 0; i < N; i++)
            text[i] = s[i];
    }
};

// Eight bytes of a word, for comparing eight bytes of text with it at once:
// the word's bytes with the case bit (0x20) set where it holds a letter, that
// case bit, and which bytes count (the word may end within the eight).
struct EightBytes {
    uint64_t want, caseBits, counted;
};
// The first eight bytes of word (all of a shorter one).
constexpr EightBytes EightOf(std::string_view word) {
    std::array<char, 8> want{}, caseBits{}, counted{};
    for (size_t i = 0; i < 8 && i < word.size(); i++) {
        caseBits[i] = IsAlpha(word[i]) ? 0x20 : 0;
        want[i] = static_cast<char>(word[i] | caseBits[i]);
        counted[i] = static_cast<char>(0xFF);
    }
    return {std::bit_cast<uint64_t>(want), std::bit_cast<uint64_t>(caseBits),
            std::bit_cast<uint64_t>(counted)};
}
// The eight bytes at s match e.
inline bool Matches(const EightBytes &e, const char *s) {
    uint64_t v;
    std::memcpy(&v, s, sizeof v);
    return ((v | e.caseBits) & e.counted) == e.want;
}
// The eight bytes of a word known when the program is built from its place
// From match the text at s + From.
template <Literal W, size_t From> inline bool SameEight(const char *s) {
    constexpr EightBytes e = EightOf(std::string_view(W.text + From, sizeof W.text - 1 - From));
    return Matches(e, s + From);
}

// IPrefix for a word known when the program is built: the comparisons are
// laid out at build time, a letter compared with its case bit set (which
// matches just its two cases), any other byte as it is. With eight bytes of
// text to read, a word of four to sixteen bytes is compared eight bytes at a
// time (a shorter one byte by byte, which mostly stops at the first).
template <Literal W> inline bool IPrefixOf(const char *s, const char *end) {
    constexpr size_t n = sizeof W.text - 1;
    if (end - s < static_cast<std::ptrdiff_t>(n)) return false;
    if constexpr (n >= 4 && n <= 16) {
        if (end - s >= 8) {
            if constexpr (n <= 8)
                return SameEight<W, 0>(s);
            else
                return SameEight<W, 0>(s) && SameEight<W, n - 8>(s);
        }
    }
    return [&]<size_t... I>(std::index_sequence<I...>) {
        return ((IsAlpha(W.text[I]) ? (s[I] | 0x20) == (W.text[I] | 0x20) : s[I] == W.text[I]) &&
                ...);
    }
    (std::make_index_sequence<n>{});
}

// IPrefix for a pattern prepared for it: folded holds the pattern with its
// letters in lower case and caseBits (as long) the case bit where it holds a
// letter, so a letter is compared with its case bit set.
inline bool FoldedPrefix(const char *s, const char *end, std::string_view folded,
                         const char *caseBits) {
    if (end - s < static_cast<std::ptrdiff_t>(folded.size())) return false;
    for (size_t i = 0; i < folded.size(); i++)
        if ((s[i] | caseBits[i]) != folded[i]) return false;
    return true;
}

inline bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && IPrefix(a.data(), a.data() + a.size(), b);
}

// "<A" followed by a blank, a tab or a line end, in either case.
inline bool AnchOpen(const char *s, const char *end) {
    return end - s >= 3 && s[0] == '<' && (s[1] == 'A' || s[1] == 'a') &&
           (s[2] == ' ' || s[2] == '\t' || s[2] == '\n');
}
inline bool AnchClose(const char *s, const char *end) {
    return IPrefixOf<"/A>">(s, end);
}
inline bool FormOpen(const char *s, const char *end) {
    return IPrefixOf<"<FORM">(s, end);
}
inline bool FormClose(const char *s, const char *end) {
    return IPrefixOf<"/FORM>">(s, end);
}

// The places of [.., end) holding a byte of a ByteFinder, for a MarkCursor.
struct ByteStarts {
    static constexpr int kAhead = 0;
    const ByteFinder &bytes;
    const char *end;
    bool At(const char *p) const { return bytes.At(p); }
#if defined(__SSE2__)
    unsigned Block(const char *p) const {
        return bytes.Block(p);
    }
#endif
};

// VlStrIStr within [text, end): the first place where pattern matches
// ignoring case, or null when stop matches first ("<A " as an anchor opens).
// Only the places that starts (ByteStarts or WordStarts<...>) picks out are
// tried: they must include every place where pattern or stop begins. The
// text may be read on up to readable.
template <class Starts>
const char *FindTag(const char *text, std::string_view pattern, std::string_view stop,
                    const Starts &starts, const char *readable = nullptr) {
    const char *end = starts.end;
    if (!text || text >= end || pattern.empty()) return nullptr;
    const bool anchStop = stop == "<A ";
    const char first = Upper(pattern.front());
    const char stopFirst = stop.empty() ? '\0' : Upper(stop.front());
    MarkCursor<Starts> candidates(starts, end, readable);
    for (const char *p = text; (p = candidates.Next(p)) != nullptr; ++p) {
        const char c = Upper(*p);
        if (c == first && IPrefix(p, end, pattern)) return p;
        if (!stop.empty() && c == stopFirst &&
            (anchStop ? AnchOpen(p, end) : IPrefix(p, end, stop)))
            return nullptr;
    }
    return nullptr;
}

// FindTag for a pattern and a stop known when the program is built (the stop
// compared as it stands).
template <Literal Pattern, Literal Stop, bool Wide = false, class Starts>
const char *FindTagOf(const char *text, const Starts &starts, const char *readable) {
    const char *end = starts.end;
    if (!text || text >= end) return nullptr;
    MarkCursor<Starts, Wide> candidates(starts, end, readable);
    for (const char *p = text; (p = candidates.Next(p)) != nullptr; ++p) {
        if (IPrefixOf<Pattern>(p, end)) return p;
        if (IPrefixOf<Stop>(p, end)) return nullptr;
    }
    return nullptr;
}

// The ends of forms, anchors and the block elements, and their stops.
inline const char *FormEnd(const char *text, const char *end, const char *readable = nullptr) {
    return FindTag(text, "/FORM>", "<FORM", WordStarts<Words<'/', 'f', '<', 'f'>>{end}, readable);
}

// VlSkipWhite within [p, end): the first character that is not white space.
inline const char *SkipWhite(const char *p, const char *end) {
    if (!p) return nullptr;
    while (p < end && IsWhite(*p))
        ++p;
    return p < end ? p : nullptr;
}
// VlSkipWhiteAndEqual within [p, end): white space, "=", white space.
inline const char *SkipWhiteAndEqual(const char *p, const char *end) {
    p = SkipWhite(p, end);
    if (!p || *p != '=') return nullptr;
    return SkipWhite(p + 1, end);
}
// VlProcessNameValue within [p, end): p at a double quote; what lies between
// it and the next one.
inline Value QuotedValue(const char *p, const char *end) {
    if (!p || p >= end || *p != '"' || p + 1 >= end) return std::nullopt;
    const char *close = FindByte(p + 1, end, '"');
    if (!close) return std::nullopt;
    return std::string_view(p + 1, static_cast<size_t>(close - p - 1));
}
// A "=" (white space around it) and a double-quoted value after a word.
inline Value QuotedAfterEqual(const char *afterWord, const char *end) {
    return QuotedValue(SkipWhiteAndEqual(afterWord, end), end);
}

// The first place at or after a start that a search finds. Asked with starts
// that never go backwards, every character is searched at most once overall:
// the answer of the last question also answers every start up to that answer.
template <class Search> class NextFinder {
  public:
    explicit NextFinder(Search search) : search_(search) {}
    const char *Next(const char *start) {
        if (from_ && start >= from_ && (!hit_ || start <= hit_)) return hit_;
        from_ = start;
        return hit_ = search_(start);
    }

  private:
    Search search_;
    const char *from_ = nullptr; // start of the last question
    const char *hit_ = nullptr;  // its answer; null: none up to the end
};

// A search for one byte up to end.
struct ByteSearch {
    char byte;
    const char *end;
    const char *operator()(const char *p) const {
        if (!p || p >= end) return nullptr;
        return FindByte(p, end, byte);
    }
};
using CharFinder = NextFinder<ByteSearch>;
inline CharFinder FinderOf(char byte, const char *end) {
    return CharFinder(ByteSearch{byte, end});
}

// A search for "##" up to end.
struct HashesSearch {
    const char *end;
    const char *operator()(const char *p) const {
        for (; (p = ByteSearch{'#', end}(p)) != nullptr; ++p)
            if (p + 1 < end && p[1] == '#') return p;
        return nullptr;
    }
};

// The name between "##Vl_" and "##" holds no white space, double quote or
// backslash.
inline bool ValidSiteName(const char *name, const char *close) {
    for (const char *q = name; q < close; ++q)
        if (IsWhite(*q) || *q == '"' || *q == '\\') return false;
    return true;
}

// Answers "does this place lie inside an anchor (a form)?" for places met in
// page order, with the rules of VlIsInAnchor and VlIsInForm, in linear time
// over a whole walk: the next mark ahead is remembered, and the last mark
// behind is carried forward as the places advance.
// MarkWords: the two-byte beginnings of the opening and closing marks.
template <bool (*Open)(const char *, const char *), bool (*Close)(const char *, const char *),
          class MarkWords>
class InsideTracker {
  public:
    InsideTracker(const char *text, const char *end)
        : text_(text), end_(end), starts_{end}, ahead_(starts_, end), behind_(starts_, end),
          done_(text) {}
    // Inlined where it is asked: a walk asks at every keyword attribute, and
    // most answers come from what the last question found.
    [[gnu::always_inline]] bool Inside(const char *pos) {
        if (pos >= end_) return true;
        if (CloseAhead(pos)) return true;
        const char *behind = LastMark(pos);
        return behind && Open(behind, end_);
    }
    // The half of the answer for a walk that knows the last mark before pos
    // (a place before end): the next mark after it closes.
    [[gnu::always_inline]] bool CloseAhead(const char *pos) {
        const char *ahead = pos + 1 < end_ ? NextMark(pos + 1) : nullptr;
        return ahead && !Open(ahead, end_);
    }

  private:
    bool IsMark(const char *p) const { return Open(p, end_) || Close(p, end_); }
    // The first mark at or after p; candidates come from a cursor.
    const char *FindMark(MarkCursor<WordStarts<MarkWords>> &cursor, const char *p) const {
        for (; (p = cursor.Next(p)) != nullptr; ++p)
            if (IsMark(p)) return p;
        return nullptr;
    }
    [[gnu::always_inline]] const char *NextMark(const char *start) {
        if (from_ && start >= from_ && (!nextMark_ || start <= nextMark_)) return nextMark_;
        from_ = start;
        return nextMark_ = FindMark(ahead_, start);
    }
    // The last mark before limit.
    [[gnu::always_inline]] const char *LastMark(const char *limit) {
        if (limit >= done_ && pendingKnown_ && (!pending_ || pending_ >= limit)) {
            done_ = limit; // no mark lies in [done_, limit)
            return lastMark_;
        }
        return SearchLastMark(limit);
    }
    const char *SearchLastMark(const char *limit) {
        if (limit < done_) { // asked backwards: search afresh
            for (const char *p = limit; p > text_;)
                if (IsMark(--p)) return p;
            return nullptr;
        }
        for (;;) {
            if (!pendingKnown_) {
                pending_ = FindMark(behind_, done_);
                pendingKnown_ = true;
            }
            if (!pending_ || pending_ >= limit) break; // kept for a later limit
            lastMark_ = pending_;
            done_ = pending_ + 1;
            pendingKnown_ = false;
        }
        // No mark lies in [done_, limit): pending_ stays the first at or after limit.
        done_ = limit;
        return lastMark_;
    }

    const char *text_, *end_;
    WordStarts<MarkWords> starts_;
    MarkCursor<WordStarts<MarkWords>> ahead_, behind_;
    const char *from_ = nullptr, *nextMark_ = nullptr; // the last search ahead
    const char *done_;                                 // every place before it is searched
    bool pendingKnown_ = false;                        // pending_ is searched:
    const char *pending_ = nullptr;                    // the first mark at or after done_
    const char *lastMark_ = nullptr;                   // the last mark before done_
};

// The trackers of anchors ("<A" and "/A>") and of forms ("<FORM", "/FORM>").
using AnchTracker = InsideTracker<AnchOpen, AnchClose, Words<'<', 'a', '/', 'a'>>;
using FormTracker = InsideTracker<FormOpen, FormClose, Words<'<', 'f', '/', 'f'>>;

// What an anchor's text gives (VlProcessAnch without the copies): the URL and
// the full name last set, and VlProcessAnch's answer.
struct AnchValues {
    Value url, fullName;
    int result = 0;
};
// The text may be read on up to readable (the end of the page).
AnchValues ReadAnchValues(const char *text, const char *end, const char *readable);
// The same for the text of the anchor whose "<A" stands at cursor, up to its
// end ("/A>").
AnchValues ReadAnchor(const char *cursor, const char *end, const char *readable);

// VlReadHtmlDesignTime with the width of the walk's block tests chosen: wide
// (thirty-two bytes) only where bytefind::HasWideBlocks(). Both give the same
// document.
VlHtmlDoc *ReadDesignTime(const char *text, bool wideBlocks);

// The "/A>" that ends the anchor whose "<A" stands at cursor, or null when
// the next anchor opens first.
inline const char *AnchorEnd(const char *cursor, const char *end) {
    return FindTag(cursor + 1, "/A>", "<A ", WordStarts<Words<'/', 'a', '<', 'a'>>{end});
}

// The first place at or after a start where Test accepts a mark, among the
// places that the Words W pick out. Asked with starts that never go
// backwards, every character is searched at most once overall (as with
// NextFinder), and the cursor's last block serves the next question.
template <class W, bool (*Test)(const char *, const char *)> class MarkSearch {
  public:
    explicit MarkSearch(const char *end) : end_(end), starts_{end}, cursor_(starts_, end) {}
    MarkSearch(const MarkSearch &) = delete; // the cursor refers to starts_
    MarkSearch &operator=(const MarkSearch &) = delete;
    const char *Next(const char *start) {
        if (from_ && start >= from_ && (!hit_ || start <= hit_)) return hit_;
        from_ = start;
        for (const char *p = start; (p = cursor_.Next(p)) != nullptr; ++p)
            if (Test(p, end_)) return hit_ = p;
        return hit_ = nullptr;
    }

  private:
    const char *end_;
    WordStarts<W> starts_;
    MarkCursor<WordStarts<W>> cursor_;
    const char *from_ = nullptr; // start of the last question
    const char *hit_ = nullptr;  // its answer; null: none up to the end
};

inline bool FormMark(const char *s, const char *end) {
    return FormOpen(s, end) || FormClose(s, end);
}
inline bool AnchMark(const char *s, const char *end) {
    return AnchOpen(s, end) || AnchClose(s, end);
}

// FormEnd and AnchorEnd for the forms and anchors a walk meets in page order:
// the first opening or closing mark from a start, when it is a closing one.
// One search goes over the whole walk instead of one a tag, so a page of
// openings without a close costs what any page costs.
template <class MarkWords, bool (*Mark)(const char *, const char *),
          bool (*Close)(const char *, const char *)>
class TagEnds {
  public:
    explicit TagEnds(const char *end) : end_(end), marks_(end) {}
    const char *From(const char *start) {
        const char *mark = marks_.Next(start);
        return mark && Close(mark, end_) ? mark : nullptr;
    }

  private:
    const char *end_;
    MarkSearch<MarkWords, Mark> marks_;
};
// FormEnd(text, end) is From(text); AnchorEnd(cursor, end) is From(cursor + 1).
using FormEnds = TagEnds<Words<'/', 'f', '<', 'f'>, FormMark, FormClose>;
using AnchorEnds = TagEnds<Words<'/', 'a', '<', 'a'>, AnchMark, AnchClose>;

// One loaded keyword, with what its recognition needs to know.
struct Keyword {
    const char *text; // as stored: a "|" keyword ends in a blank
    size_t length;
    // For comparing ignoring case: the text with its letters in lower case,
    // and the case bit (0x20) where it holds a letter, 0 elsewhere.
    std::string folded, caseBits;
    // The same as eight bytes, for a keyword of up to eight (else unused).
    EightBytes eight;
    char quote;       // the delimiter of its value
    bool endsInBlank; // its value follows without "="
    bool isHref;      // HREF or ACTION: left to the tag scanner inside
    bool isAction;    // an anchor or a form
    // The copy of the text that the anchors found in one store share.
    mutable const VlHtmlStore *copiedIn = nullptr;
    mutable char *copy = nullptr;
};

// White space followed by a byte that can start a keyword and, when every
// keyword is two bytes long or more, by a byte that can stand second in one:
// where a keyword attribute can begin.
struct KeywordMarks {
    static constexpr int kAhead = 2;
    const ByteFinder &firsts;  // alphanumeric only
    const ByteFinder &seconds; // used when withSeconds
    bool withSeconds;
    const char *end;
    bool At(const char *p) const {
        return p + 1 < end && IsWhite(*p) && firsts.Has(p[1]) &&
               (!withSeconds || (p + 2 < end && seconds.Has(p[2])));
    }
#if defined(__SSE2__)
    // A quick test that lets through a little more than the marks (any byte
    // up to the blank, a first or second byte in its other case or with the
    // case bit clear), from the bytes at p and, case bit set, at p + 1.
    bytefind::Bytes Likely(bytefind::Bytes v, bytefind::Bytes foldedNext, const char *p) const {
        const bytefind::Bytes hit =
            bytefind::And(bytefind::UpToBlank(v), firsts.LikelyFolded(foldedNext));
        return withSeconds ? bytefind::And(hit, seconds.Likely(p + 2)) : hit;
    }
    // The same, loading the bytes itself.
    bytefind::Bytes LikelyAt(const char *p) const {
        return Likely(bytefind::Load(p), _mm_or_si128(bytefind::Load(p + 1), _mm_set1_epi8(0x20)),
                      p);
    }
    // The places of the quick test tested one by one.
    unsigned Block(const char *p) const {
        unsigned bits = bytefind::Bits(LikelyAt(p));
        for (unsigned rest = bits; rest != 0; rest &= rest - 1) {
            const unsigned place = static_cast<unsigned>(__builtin_ctz(rest));
            if (!At(p + place)) bits &= ~(1U << place);
        }
        return bits;
    }
#endif
};

// What a walk over one page needs to recognise keyword attributes: the
// keyword list as a table (in list order), the bytes that can start a
// keyword, and the two trackers.
struct KeywordScan {
    KeywordScan(const char *text, const char *end);
    const char *text;
    const char *end;
    std::vector<Keyword> keywords;
    ByteFinder firstBytes;  // both cases of every keyword's first byte
    ByteFinder secondBytes; // and of its second
    bool allLong = true;    // every keyword has a second byte
    // A text beginning with HREF is recognised as the keyword HREF (no
    // keyword before it in the list begins that text, whatever follows).
    bool hrefFirst = false;
    KeywordMarks marks{firstBytes, secondBytes, false, end};
    AnchTracker inAnch;
    FormTracker inForm;
};

// A keyword attribute found: the keyword and its value (the URL).
struct KeywordHit {
    const Keyword *keyword;
    std::string_view url;
};

// VlProcessKeyWords for a place met during a walk over scan's text, without
// making the record; KeywordAnchor makes it (in store; a record of its own
// without one). A walk that has met every anchor mark before the place says
// whether the last one opens an anchor, and the tracker is asked only about
// the marks after it; otherwise about both.
enum class AnchorMarks { kAsk, kLastOpens, kLastCloses };
std::optional<KeywordHit> RecognizeKeyword(KeywordScan &scan, const char *position,
                                           AnchorMarks anchorMarks = AnchorMarks::kAsk);
VlHtmlAnch *KeywordAnchor(const KeywordHit &hit, VlHtmlStore *store);

// The delimiter of a keyword's value: double quotes for a keyword stored with a
// trailing blank or holding any upper-case letter, single quotes otherwise.
char KeywordQuote(std::string_view keyword);

} // namespace vlscan

#endif
