// Finding the next place worth a look in a text, memchr-style: the readers of
// pages and generated code jump from one byte that can start something to the
// next instead of testing every byte. A ByteFinder is a set of bytes; a
// MarkCursor walks a text forward and gives the places that a set of marks
// (a ByteFinder, a WordSet of two-byte word beginnings, or a reader's own
// test) picks out.
// With SSE2 (every x86-64 processor) sixteen bytes are tested at a time, and
// the cursor keeps the sixteen-byte block it looked at last, so marks that
// stand close together cost little; elsewhere the bytes are tested one by
// one. Not part of the C interface.
#ifndef VELMORA_UTIL_BYTEFIND_HPP
#define VELMORA_UTIL_BYTEFIND_HPP

#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace bytefind {

#if defined(__SSE2__)
using Bytes = __m128i;
inline Bytes Load(const char *p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(p));
}
inline Bytes Is(Bytes v, char c) {
    return _mm_cmpeq_epi8(v, _mm_set1_epi8(c));
}
// A letter in either case (lower is the lower-case letter).
inline Bytes IsLetter(Bytes v, char lower) {
    return _mm_cmpeq_epi8(_mm_or_si128(v, _mm_set1_epi8(0x20)), _mm_set1_epi8(lower));
}
// The C library's space class: blank, or tab to carriage return.
inline Bytes IsWhite(Bytes v) {
    const Bytes fromTab = _mm_sub_epi8(v, _mm_set1_epi8('\t'));
    const Bytes tabToReturn =
        _mm_cmpeq_epi8(_mm_min_epu8(fromTab, _mm_set1_epi8('\r' - '\t')), fromTab);
    return _mm_or_si128(Is(v, ' '), tabToReturn);
}
inline Bytes Or(Bytes a, Bytes b) {
    return _mm_or_si128(a, b);
}
inline Bytes And(Bytes a, Bytes b) {
    return _mm_and_si128(a, b);
}
inline unsigned Bits(Bytes v) {
    return static_cast<unsigned>(_mm_movemask_epi8(v));
}
#endif

// ASCII letters to lower case; every other byte as it is.
inline char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace bytefind

// A set of bytes.
class ByteFinder {
  public:
    static constexpr int kAhead = 0; // bytes read after a place to test it

    ByteFinder() = default;
    // The set of the given bytes (repeats count once).
    explicit ByteFinder(std::string_view bytes) {
        for (char c : bytes) {
            if (Has(c)) continue;
            table_[static_cast<unsigned char>(c)] = true;
            count_++;
        }
        Plan(bytes);
    }

    bool Has(char c) const { return table_[static_cast<unsigned char>(c)]; }
    bool At(const char *p) const { return Has(*p); }

#if defined(__SSE2__)
    // Bit i set when p[i] is in the set, for the sixteen bytes at p.
    unsigned Block(const char *p) const {
        if (probes_ == 0) {
            unsigned bits = 0;
            for (int i = 0; i < 16; i++)
                if (Has(p[i])) bits |= 1U << i;
            return bits;
        }
        const bytefind::Bytes v = _mm_or_si128(bytefind::Load(p), foldMask_);
        bytefind::Bytes hit = _mm_cmpeq_epi8(v, probe_[0]);
        for (int k = 1; k < probes_; k++)
            hit = _mm_or_si128(hit, _mm_cmpeq_epi8(v, probe_[k]));
        unsigned bits = bytefind::Bits(hit);
        if (fold_ != 0) // folding also wakes bytes outside the set
            for (unsigned rest = bits; rest != 0; rest &= rest - 1)
                if (!Has(p[__builtin_ctz(rest)])) bits &= ~(rest & -rest);
        return bits;
    }
#endif

    // The first place in [p, end) holding a byte of the set, or null.
    const char *Find(const char *p, const char *end) const {
        if (p >= end || count_ == 0) return nullptr;
        if (count_ == 1)
            return static_cast<const char *>(std::memchr(p, single_, static_cast<size_t>(end - p)));
#if defined(__SSE2__)
        for (; end - p >= 16; p += 16)
            if (unsigned bits = Block(p)) return p + __builtin_ctz(bits);
#endif
        for (; p < end; ++p)
            if (Has(*p)) return p;
        return nullptr;
    }

  private:
    static constexpr int kProbes = 8;

    // Chooses the probes of the sixteen-byte test: the bytes themselves when
    // there are at most eight, else the bytes with bit 5 set (a letter's two
    // cases become one probe) when that leaves at most eight; else none, and
    // the bytes are looked up one by one.
    void Plan(std::string_view bytes) {
        if (count_ == 1) single_ = bytes.front();
        for (const unsigned fold : {0U, 0x20U}) {
            unsigned char chosen[kProbes] = {};
            int n = 0;
            bool fits = true;
            for (char c : bytes) {
                const auto folded =
                    static_cast<unsigned char>(static_cast<unsigned char>(c) | fold);
                bool seen = false;
                for (int k = 0; k < n; k++)
                    seen = seen || chosen[k] == folded;
                if (seen) continue;
                if (n == kProbes) {
                    fits = false;
                    break;
                }
                chosen[n++] = folded;
            }
            if (!fits) continue;
#if defined(__SSE2__)
            fold_ = static_cast<unsigned char>(fold);
            probes_ = n;
            foldMask_ = _mm_set1_epi8(static_cast<char>(fold_));
            for (int k = 0; k < n; k++)
                probe_[k] = _mm_set1_epi8(static_cast<char>(chosen[k]));
#endif
            return;
        }
    }

    bool table_[256] = {};
    int count_ = 0;
    char single_ = 0;
#if defined(__SSE2__)
    unsigned char fold_ = 0;
    int probes_ = 0;
    bytefind::Bytes foldMask_{};
    bytefind::Bytes probe_[kProbes]{};
#endif
};

// A few two-byte word beginnings, letters in either case ("ac" for ACTION,
// "<f" for a FORM tag), and possibly one byte: the places a reader looking
// for a handful of words needs to look at. Made once (static), with its
// sixteen-byte probes ready; letters are given in lower case (an upper-case
// letter given matches nothing).
class WordSet {
  public:
    static constexpr int kMaxPairs = 6;
    explicit WordSet(std::string_view pairs, char byte = '\0') : byte_(byte) {
        for (size_t i = 0; i + 1 < pairs.size() && pairs_ < kMaxPairs; i += 2, pairs_++) {
            first_[pairs_] = pairs[i];
            second_[pairs_] = pairs[i + 1];
#if defined(__SSE2__)
            // A letter is compared with its case bit set, which matches just
            // its two cases; any other byte as it is.
            auto fold = [](char c) { return _mm_set1_epi8(c >= 'a' && c <= 'z' ? 0x20 : 0); };
            firstFold_[pairs_] = fold(pairs[i]);
            secondFold_[pairs_] = fold(pairs[i + 1]);
            firstProbe_[pairs_] = _mm_set1_epi8(pairs[i]);
            secondProbe_[pairs_] = _mm_set1_epi8(pairs[i + 1]);
#endif
        }
#if defined(__SSE2__)
        byteProbe_ = _mm_set1_epi8(byte);
#endif
    }
    // A place of [.., end) where a word of the set begins.
    bool At(const char *p, const char *end) const {
        if (byte_ && *p == byte_) return true;
        if (p + 1 >= end) return false;
        for (int k = 0; k < pairs_; k++)
            if (bytefind::ToLower(*p) == first_[k] && bytefind::ToLower(p[1]) == second_[k])
                return true;
        return false;
    }
#if defined(__SSE2__)
    // Exactly At's answers for the sixteen places from p.
    unsigned Block(const char *p) const {
        const bytefind::Bytes v = bytefind::Load(p), next = bytefind::Load(p + 1);
        bytefind::Bytes hit = byte_ ? _mm_cmpeq_epi8(v, byteProbe_) : _mm_setzero_si128();
        for (int k = 0; k < pairs_; k++)
            hit = bytefind::Or(
                hit,
                bytefind::And(_mm_cmpeq_epi8(_mm_or_si128(v, firstFold_[k]), firstProbe_[k]),
                              _mm_cmpeq_epi8(_mm_or_si128(next, secondFold_[k]), secondProbe_[k])));
        return bytefind::Bits(hit);
    }
#endif

  private:
    char byte_;
    int pairs_ = 0;
    char first_[kMaxPairs] = {}, second_[kMaxPairs] = {};
#if defined(__SSE2__)
    bytefind::Bytes byteProbe_{};
    bytefind::Bytes firstFold_[kMaxPairs]{}, secondFold_[kMaxPairs]{};
    bytefind::Bytes firstProbe_[kMaxPairs]{}, secondProbe_[kMaxPairs]{};
#endif
};

// The places of [.., end) where a word of a WordSet begins, for a MarkCursor.
struct WordStarts {
    static constexpr int kAhead = 1;
    const WordSet &words;
    const char *end;
    bool At(const char *p) const { return words.At(p, end); }
#if defined(__SSE2__)
    unsigned Block(const char *p) const {
        return words.Block(p);
    }
#endif
};

// Walks [.., end) forward and gives the places that Marks picks out, in
// increasing order. Marks answers At(p) for one place and, with SSE2,
// Block(p) for the sixteen places from p, reading up to Marks::kAhead bytes
// after each place. Blocks are read up to readable (the end of the whole
// text, which a part of it may be walked up to end): places at or after end
// are never given, but a place just before end may be given by a test that
// looked past end, so readers check what they find against end. The block
// looked at last is kept, so asking again from a later place in it costs a
// shift.
template <class Marks> class MarkCursor {
  public:
    MarkCursor(const Marks &marks, const char *end, const char *readable = nullptr)
        : marks_(marks), end_(end), readable_(readable && readable > end ? readable : end) {}

    // The first marked place at or after p, or null.
    const char *Next(const char *p) {
        if (p >= end_) return nullptr;
#if defined(__SSE2__)
        if (base_ && p >= base_ && p < base_ + 16) {
            const unsigned bits = bits_ & (~0U << (p - base_));
            if (bits != 0) return base_ + __builtin_ctz(bits);
            p = base_ + 16;
            if (p >= end_) return nullptr;
        }
        for (; readable_ - p >= 16 + Marks::kAhead; p += 16) {
            base_ = p;
            bits_ = marks_.Block(p);
            if (end_ - p < 16) bits_ &= (1U << (end_ - p)) - 1; // places before end only
            if (bits_ != 0) return p + __builtin_ctz(bits_);
            if (end_ - p <= 16) return nullptr;
        }
        base_ = nullptr;
#endif
        for (; p < end_; ++p)
            if (marks_.At(p)) return p;
        return nullptr;
    }

  private:
    const Marks &marks_;
    const char *end_;
    const char *readable_;
#if defined(__SSE2__)
    const char *base_ = nullptr; // the block looked at last
    unsigned bits_ = 0;          // its marks before end
#endif
};

#endif
