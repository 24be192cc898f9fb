// Finding the next place worth a look in a text, memchr-style: the readers of
// pages and generated code jump from one byte that can start something to the
// next instead of testing every byte. A ByteFinder is a set of bytes; a
// MarkCursor walks a text forward and gives the places that a set of marks
// (a ByteFinder, Words: a few two-byte word beginnings, or a reader's own
// test) picks out.
// With SSE2 (every x86-64 processor) sixteen bytes are tested at a time, and
// the cursor keeps the block it looked at last, so marks that stand close
// together cost little; elsewhere the bytes are tested one by one. Marks may
// also test thirty-two bytes at a time with AVX2 (WideBlock), for a reader
// built for that processor and entered only when the processor has it (see
// HasWideBlocks). Not part of the C interface.
#ifndef VELMORA_UTIL_BYTEFIND_HPP
#define VELMORA_UTIL_BYTEFIND_HPP

#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
// The thirty-two-byte tests are built with a function attribute, so that
// nothing else in the program uses the AVX2 instructions: a function that
// tests wide blocks says so with VELMORA_WIDE, and only code it inlines
// runs them.
#if defined(__SSE2__) && defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#define VELMORA_WIDE_BLOCKS 1
#define VELMORA_WIDE [[gnu::target("avx2")]]
#else
#define VELMORA_WIDE_BLOCKS 0
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
// The bytes up to the blank: white space, and the control bytes besides it
// (a quick test for readers that check white space again).
inline Bytes UpToBlank(Bytes v) {
    return _mm_cmpeq_epi8(_mm_min_epu8(v, _mm_set1_epi8(' ')), v);
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

// Whether this processor runs the thirty-two-byte tests (AVX2, with the
// system saving its registers).
inline bool HasWideBlocks() {
#if VELMORA_WIDE_BLOCKS
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
#else
    return false;
#endif
}

#if VELMORA_WIDE_BLOCKS
// The tests above on thirty-two bytes.
using WideBytes = __m256i;
VELMORA_WIDE inline WideBytes LoadWide(const char *p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(p));
}
// Thirty-two copies of each byte, read from memory where a test compares
// with them. Defined in bytefind.cpp, out of the compiler's sight: with the
// values at hand it makes each copy in registers again after every call
// (vector registers do not survive one), three instructions a byte.
struct WideSplats {
    alignas(32) char bytes[256][32];
};
extern const WideSplats kWideSplats;
VELMORA_WIDE inline WideBytes Splat(char c) {
    return LoadWide(kWideSplats.bytes[static_cast<unsigned char>(c)]);
}
template <char C> VELMORA_WIDE inline WideBytes Is(WideBytes v) {
    return _mm256_cmpeq_epi8(v, Splat(C));
}
VELMORA_WIDE inline WideBytes Is(WideBytes v, WideBytes probe) {
    return _mm256_cmpeq_epi8(v, probe);
}
VELMORA_WIDE inline WideBytes Folded(WideBytes v) {
    return _mm256_or_si256(v, Splat(0x20));
}
VELMORA_WIDE inline WideBytes UpToBlank(WideBytes v) {
    return _mm256_cmpeq_epi8(_mm256_min_epu8(v, Splat(' ')), v);
}
VELMORA_WIDE inline WideBytes Or(WideBytes a, WideBytes b) {
    return _mm256_or_si256(a, b);
}
VELMORA_WIDE inline WideBytes And(WideBytes a, WideBytes b) {
    return _mm256_and_si256(a, b);
}
VELMORA_WIDE inline unsigned Bits(WideBytes v) {
    return static_cast<unsigned>(_mm256_movemask_epi8(v));
}
#endif

// ASCII letters to lower case; every other byte as it is.
inline char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace bytefind

// memchr on [p, end) for the short distances that values and tags mostly
// span: the first sixteen bytes are tested in place, without the call and the
// length dispatch of the library's function, which cost more than the search.
inline const char *FindByte(const char *p, const char *end, char c) {
    if (p >= end) return nullptr;
#if defined(__SSE2__)
    if (end - p >= 16) {
        if (const unsigned bits = bytefind::Bits(bytefind::Is(bytefind::Load(p), c)))
            return p + __builtin_ctz(bits);
        p += 16;
        if (p >= end) return nullptr;
        return static_cast<const char *>(std::memchr(p, c, static_cast<size_t>(end - p)));
    }
#endif
    for (; p < end; ++p)
        if (*p == c) return p;
    return nullptr;
}

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
    [[gnu::always_inline]] unsigned Block(const char *p) const {
        if (probes_ == 0) {
            unsigned bits = 0;
            for (int i = 0; i < 16; i++)
                if (Has(p[i])) bits |= 1U << i;
            return bits;
        }
        // The probes unrolled (a set is tested at every block of a page); the
        // probes after the last repeat it.
        if (probes_ <= 2) return Probes<2>(p);
        if (probes_ <= 4) return Probes<4>(p);
        return Probes<kProbes>(p);
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

#if defined(__SSE2__)
    // A quick test that answers at least the set (all ones where the byte
    // may be in it) for readers that check each answer again: with probes,
    // the bytes that equal a member once both have the case bit (0x20) set,
    // so a letter also its other case and a few control bytes their
    // counterparts; without, every byte.
    [[gnu::always_inline]] bytefind::Bytes Likely(const char *p) const {
        return LikelyFolded(_mm_or_si128(bytefind::Load(p), _mm_set1_epi8(0x20)));
    }
    // With one or two probes: both (the one twice), case bit set, for a
    // reader that keeps them at hand; false otherwise.
    bool TwoFoldedProbes(bytefind::Bytes probes[2]) const {
        if (probes_ < 1 || probes_ > 2) return false;
        probes[0] = folded_[0];
        probes[1] = folded_[1];
        return true;
    }
    // The same for bytes already loaded with their case bit set.
    [[gnu::always_inline]] bytefind::Bytes LikelyFolded(bytefind::Bytes folded) const {
        if (probes_ == 0) return _mm_set1_epi8(-1);
        if (probes_ <= 2)
            return _mm_or_si128(_mm_cmpeq_epi8(folded, folded_[0]),
                                _mm_cmpeq_epi8(folded, folded_[1]));
        bytefind::Bytes hit = _mm_cmpeq_epi8(folded, folded_[0]);
        for (int k = 1; k < kProbes; k++)
            hit = _mm_or_si128(hit, _mm_cmpeq_epi8(folded, folded_[k]));
        return hit;
    }
#endif

  private:
    static constexpr int kProbes = 8;

#if defined(__SSE2__)
    // The test with the first N probes.
    template <int N> unsigned Probes(const char *p) const {
        const bytefind::Bytes v = bytefind::Load(p);
        bytefind::Bytes hit = _mm_setzero_si128();
        for (int k = 0; k < N; k++)
            hit = _mm_or_si128(hit, _mm_cmpeq_epi8(_mm_or_si128(v, caseBit_[k]), probe_[k]));
        return bytefind::Bits(hit);
    }
#endif

    // Chooses the probes of the sixteen-byte test: a letter whose two cases
    // are both in the set is one probe, compared with the case bit set (which
    // matches just those two); every other byte is a probe of its own. With
    // more than eight probes there are none, and the bytes are looked up one
    // by one.
    void Plan(std::string_view bytes) {
        if (count_ == 1) single_ = bytes.front();
#if defined(__SSE2__)
        int n = 0;
        for (int b = 0; b < 256; b++) {
            const auto c = static_cast<char>(b);
            if (!Has(c)) continue;
            const bool lower = b >= 'a' && b <= 'z', upper = b >= 'A' && b <= 'Z';
            const bool both = (lower && Has(static_cast<char>(b - 0x20))) ||
                              (upper && Has(static_cast<char>(b + 0x20)));
            if (both && upper) continue; // the lower case stands for both
            if (n == kProbes) {
                probes_ = 0;
                return;
            }
            caseBit_[n] = _mm_set1_epi8(both ? 0x20 : 0);
            folded_[n] = _mm_set1_epi8(static_cast<char>(b | 0x20));
            probe_[n++] = _mm_set1_epi8(c); // for both cases, the lower one
        }
        probes_ = n;
        for (int k = n; n > 0 && k < kProbes; k++) { // the eight-probe test repeats the last
            caseBit_[k] = caseBit_[n - 1];
            folded_[k] = folded_[n - 1];
            probe_[k] = probe_[n - 1];
        }
#endif
    }

    bool table_[256] = {};
    int count_ = 0;
    char single_ = 0;
#if defined(__SSE2__)
    int probes_ = 0;
    bytefind::Bytes caseBit_[kProbes]{}; // 0x20 where a probe stands for both cases
    bytefind::Bytes probe_[kProbes]{};
    bytefind::Bytes folded_[kProbes]{}; // each probe with the case bit set
#endif
};

// A few word beginnings known when the program is built, as pairs of bytes:
// Words<'<', 'f', '#', '#'> picks out the places where "<f" or "<F", or
// "##", begins. A lower-case letter matches both its cases, any other byte
// itself, and a second byte of '\0' any byte (a one-byte word). The places a
// reader looking for a handful of words needs to look at.
template <char... Bytes> struct Words {
    static_assert(sizeof...(Bytes) % 2 == 0, "pairs of bytes");
    static constexpr char kBytes[] = {Bytes...};
    static constexpr int kPairs = static_cast<int>(sizeof...(Bytes) / 2);
    static constexpr bool IsLetter(char c) { return c >= 'a' && c <= 'z'; }
    static bool Same(char c, char want) {
        return IsLetter(want) ? bytefind::ToLower(c) == want : c == want;
    }

    // A place of [.., end) where a word begins.
    static bool At(const char *p, const char *end) {
        for (int k = 0; k < kPairs; k++) {
            if (!Same(*p, kBytes[2 * k])) continue;
            if (kBytes[2 * k + 1] == '\0' || (p + 1 < end && Same(p[1], kBytes[2 * k + 1])))
                return true;
        }
        return false;
    }
#if defined(__SSE2__)
    // Exactly At's answers for the sixteen places from p (reading one byte
    // more): a letter is compared with its case bit set, which matches just
    // its two cases.
    static unsigned Block(const char *p) {
        const bytefind::Bytes v = bytefind::Load(p), next = bytefind::Load(p + 1);
        const bytefind::Bytes caseBit = _mm_set1_epi8(0x20);
        const bytefind::Bytes foldedV = _mm_or_si128(v, caseBit);
        const bytefind::Bytes foldedNext = _mm_or_si128(next, caseBit);
        // One test a pair, unrolled when the program is built, so the bytes
        // compared with are constants and the letter tests cost nothing.
        return bytefind::Bits(Pairs<Bytes...>(v, next, foldedV, foldedNext));
    }

#if VELMORA_WIDE_BLOCKS
    // The same for thirty-two places.
    VELMORA_WIDE static unsigned WideBlock(const char *p) {
        const bytefind::WideBytes v = bytefind::LoadWide(p), next = bytefind::LoadWide(p + 1);
        return bytefind::Bits(
            WidePairs<Bytes...>(v, next, bytefind::Folded(v), bytefind::Folded(next)));
    }
#endif

  private:
#if VELMORA_WIDE_BLOCKS
    template <char A, char B, char... Rest>
    VELMORA_WIDE static bytefind::WideBytes
    WidePairs(bytefind::WideBytes v, bytefind::WideBytes next, bytefind::WideBytes foldedV,
              bytefind::WideBytes foldedNext) {
        bytefind::WideBytes word = bytefind::Is<A>(IsLetter(A) ? foldedV : v);
        if constexpr (B != '\0')
            word = bytefind::And(word, bytefind::Is<B>(IsLetter(B) ? foldedNext : next));
        if constexpr (sizeof...(Rest) == 0)
            return word;
        else
            return bytefind::Or(word, WidePairs<Rest...>(v, next, foldedV, foldedNext));
    }
#endif
    template <char A, char B, char... Rest>
    static bytefind::Bytes Pairs(bytefind::Bytes v, bytefind::Bytes next, bytefind::Bytes foldedV,
                                 bytefind::Bytes foldedNext) {
        bytefind::Bytes word = bytefind::Is(IsLetter(A) ? foldedV : v, A);
        if constexpr (B != '\0')
            word = bytefind::And(word, bytefind::Is(IsLetter(B) ? foldedNext : next, B));
        if constexpr (sizeof...(Rest) == 0)
            return word;
        else
            return bytefind::Or(word, Pairs<Rest...>(v, next, foldedV, foldedNext));
    }
#endif
};

// The places of [.., end) where one of the Words (a Words<...>) begins, for a
// MarkCursor.
template <class W> struct WordStarts {
    static constexpr int kAhead = 1;
    const char *end;
    bool At(const char *p) const { return W::At(p, end); }
#if defined(__SSE2__)
    unsigned Block(const char *p) const {
        return W::Block(p);
    }
#endif
#if VELMORA_WIDE_BLOCKS
    VELMORA_WIDE unsigned WideBlock(const char *p) const {
        return W::WideBlock(p);
    }
#endif
};

// Walks [.., end) forward and gives the places that Marks picks out, in
// increasing order. Marks answers At(p) for one place and, with SSE2,
// Block(p) for the sixteen places from p (Wide: WideBlock(p) for thirty-two,
// in a reader built for AVX2), reading up to Marks::kAhead bytes after each
// place. Blocks are read up to readable (the end of the whole text, which a
// part of it may be walked up to end): places at or after end are never
// given, but a place just before end may be given by a test that looked past
// end, so readers check what they find against end. The block looked at
// last is kept, so asking again from a later place in it costs a shift.
template <class Marks, bool Wide = false> class MarkCursor {
  public:
    MarkCursor(const Marks &marks, const char *end, const char *readable = nullptr)
        : marks_(marks), end_(end), readable_(readable && readable > end ? readable : end) {}

    // The first marked place at or after p, or null.
    const char *Next(const char *p) {
        if (p >= end_) return nullptr;
#if defined(__SSE2__)
        if (base_ && p >= base_ && p < base_ + kWidth) {
            const unsigned bits = bits_ & (~0U << (p - base_));
            if (bits != 0) return base_ + __builtin_ctz(bits);
            p = base_ + kWidth;
            if (p >= end_) return nullptr;
        }
        for (; readable_ - p >= kWidth + Marks::kAhead; p += kWidth) {
            base_ = p;
            bits_ = BlockAt(p);
            if (end_ - p < kWidth) bits_ &= (1U << (end_ - p)) - 1; // places before end only
            if (bits_ != 0) return p + __builtin_ctz(bits_);
            if (end_ - p <= kWidth) return nullptr;
        }
        base_ = nullptr;
#endif
        for (; p < end_; ++p)
            if (marks_.At(p)) return p;
        return nullptr;
    }

  private:
#if defined(__SSE2__)
    static constexpr bool kWide = Wide && VELMORA_WIDE_BLOCKS;
    static constexpr int kWidth = kWide ? 32 : 16;
    unsigned BlockAt(const char *p) const {
        if constexpr (kWide)
            return marks_.WideBlock(p);
        else
            return marks_.Block(p);
    }
#endif
    const Marks &marks_;
    const char *end_;
    const char *readable_;
#if defined(__SSE2__)
    const char *base_ = nullptr; // the block looked at last
    unsigned bits_ = 0;          // its marks before end
#endif
};

#endif
