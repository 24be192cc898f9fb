// The reference copy of the page scanner's text helpers (src/html/textscan.hpp
// as it stood before the scanner jumped between candidate bytes), kept
// unchanged inside namespace vlref for the differential fuzz target.
// C++ helpers shared by the keyword recogniser, the scanner and the markup (not
// part of the C interface): case-insensitive prefix tests on NUL-terminated page
// text, and finders that remember their last answer so that a walk over a page
// asking "where is the next X?" at ever later places stays linear in the page.
#ifndef VELMORA_FUZZ_REFERENCE_TEXTSCAN_HPP
#define VELMORA_FUZZ_REFERENCE_TEXTSCAN_HPP

#include <cctype>
#include <cstring>

#include "html/document.h"

namespace vlref {

namespace vlscan {

// The C library's space class in the "C" locale.
inline bool IsWhite(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
inline bool IsAlnum(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
// Case folding of the ASCII letters only: tag and attribute names are ASCII.
inline char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// s begins with pat, ignoring case; never reads past the end of s.
inline bool IPrefix(const char *s, const char *pat) {
    for (; *pat; ++s, ++pat)
        if (!*s || Upper(*s) != Upper(*pat)) return false;
    return true;
}

// "<A" followed by a blank, a tab or a line end, in either case.
inline bool AnchOpen(const char *s) {
    return s[0] == '<' && (s[1] == 'A' || s[1] == 'a') &&
           (s[2] == ' ' || s[2] == '\t' || s[2] == '\n');
}

inline bool AnchClose(const char *s) {
    return IPrefix(s, "/A>");
}
inline bool FormOpen(const char *s) {
    return IPrefix(s, "<FORM");
}
inline bool FormClose(const char *s) {
    return IPrefix(s, "/FORM>");
}

// The first place at or after a start where Pred holds. Asked with starts that
// never go backwards, every character is tested at most once overall: the
// answer of the last question also answers every start up to that answer.
template <class Pred> class NextFinder {
  public:
    explicit NextFinder(Pred pred = Pred()) : pred_(pred) {}
    const char *Next(const char *start) {
        if (from_ && start >= from_ && (!hit_ || start <= hit_)) return hit_;
        from_ = start;
        hit_ = nullptr;
        for (const char *p = start; *p; ++p)
            if (pred_(p)) return hit_ = p;
        return nullptr;
    }

  private:
    Pred pred_;
    const char *from_ = nullptr; // start of the last question
    const char *hit_ = nullptr;  // its answer; null: none up to the end
};

// The last place before a limit (and at or after the text's start) where Pred
// holds. Asked with limits that never go backwards, the text is walked once.
template <class Pred> class LastFinder {
  public:
    LastFinder(const char *text, Pred pred = Pred()) : text_(text), done_(text), pred_(pred) {}
    const char *Last(const char *limit) {
        if (limit < done_) { // asked backwards: search afresh
            for (const char *p = limit - 1; p >= text_; --p)
                if (pred_(p)) return p;
            return nullptr;
        }
        for (; done_ < limit; ++done_)
            if (pred_(done_)) hit_ = done_;
        return hit_;
    }

  private:
    const char *text_;
    const char *done_; // every place before this one has been tested
    const char *hit_ = nullptr;
    Pred pred_;
};

struct AnchMark {
    bool operator()(const char *p) const { return AnchOpen(p) || AnchClose(p); }
};
struct FormMark {
    bool operator()(const char *p) const { return FormOpen(p) || FormClose(p); }
};
template <char C> struct CharIs {
    bool operator()(const char *p) const { return *p == C; }
};

// Answers "does this place lie inside an anchor (a form)?" for places met in
// page order, with the rules of VlIsInAnchor and VlIsInForm, in linear time
// over a whole walk.
template <class Mark, bool (*Open)(const char *)> class InsideTracker {
  public:
    explicit InsideTracker(const char *text) : back_(text) {}
    bool Inside(const char *pos) {
        if (!*pos) return true;
        const char *ahead = pos[1] ? fwd_.Next(pos + 1) : nullptr;
        if (ahead && !Open(ahead)) return true;
        const char *behind = back_.Last(pos);
        return behind && Open(behind);
    }

  private:
    NextFinder<Mark> fwd_;
    LastFinder<Mark> back_;
};

using AnchTracker = InsideTracker<AnchMark, AnchOpen>;
using FormTracker = InsideTracker<FormMark, FormOpen>;

// The position a keyword attribute recogniser needs about the page it walks.
struct KeywordScan {
    explicit KeywordScan(const char *t) : text(t), inAnch(t), inForm(t) {}
    const char *text;
    AnchTracker inAnch;
    FormTracker inForm;
};

// VlProcessKeyWords for a place met during a walk over scan.text.
VlHtmlAnch *ProcessKeyWordsAt(KeywordScan &scan, const char *position);

// The delimiter of a keyword's value: double quotes for a keyword stored with a
// trailing blank or holding any upper-case letter, single quotes otherwise.
char KeywordQuote(const char *keyword);

} // namespace vlscan

} // namespace vlref

#endif
