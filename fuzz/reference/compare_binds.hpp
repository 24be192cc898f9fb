// The differential check of the binding-code parser: one function body goes
// through the engine's parser and through the reference copy
// (reference.hpp), and the binds they build must agree in every field, child
// records included (walked through the field tables of the bind records).
// The line readers are compared too: the work-call reader with the
// reference's, and the engine's sscanf-free reading of the generator's call
// lines with sscanf itself. Used by the fuzz target fuzz_bindcode_diff and by
// the corpus test of the binding-code tests.
#ifndef VELMORA_FUZZ_REFERENCE_COMPARE_BINDS_HPP
#define VELMORA_FUZZ_REFERENCE_COMPARE_BINDS_HPP

#include <array>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

#include "bindcode/callfields.hpp"
#include "maps/fields.hpp"
#include "reference/compare.hpp"

namespace vlref {

inline void CompareRecords(Differences &d, const std::string &w, const void *a, const void *b,
                           const BindRecordKind &kind) {
    d.Number(w + " present", a != nullptr, b != nullptr);
    if (!a || !b) return;
    for (const BindField &f : kind.fields) {
        const std::string what = w + "." + f.name;
        switch (f.kind) {
        case FieldKind::Text:
        case FieldKind::LongText:
        case FieldKind::Choice:
            d.Text(what, FieldOf<char *>(a, f), FieldOf<char *>(b, f));
            break;
        case FieldKind::Int:
        case FieldKind::Flag:
            d.Number(what, FieldOf<int>(a, f), FieldOf<int>(b, f));
            break;
        case FieldKind::Long:
            d.Number(what, FieldOf<long>(a, f), FieldOf<long>(b, f));
            break;
        case FieldKind::Lines:
        case FieldKind::LongLines:
        case FieldKind::Count:
        case FieldKind::Records: {
            SutList *x = FieldOf<SutList *>(a, f), *y = FieldOf<SutList *>(b, f);
            d.Number(what + " size", SutSizList(x), SutSizList(y));
            for (int i = 0; f.kind != FieldKind::Count && i < SutSizList(x) && i < SutSizList(y);
                 i++) {
                const std::string item = what + " " + std::to_string(i);
                if (f.kind == FieldKind::Records)
                    CompareRecords(d, item, SutGetNList(x, i), SutGetNList(y, i), *f.children);
                else
                    d.Text(item, static_cast<const char *>(SutGetNList(x, i)),
                           static_cast<const char *>(SutGetNList(y, i)));
            }
            break;
        }
        case FieldKind::Handle:
            break;
        }
    }
}

// The generator's call lines that the parser reads by pattern, with the
// kind of each conversion.
struct CallPattern {
    const char *pattern;
    const char *kinds; // 'd' or 's' for each conversion
};
constexpr CallPattern kCallPatterns[] = {
    {"\tSgeSetColDetail(pSgeWCD, %d, %d, %d, %d,\n", "dddd"},
    {"\tSgeSetColBind(pSgeWCD, %s %d, %d, %d, %s", "sddds"},
    {"\tSgeSetArgBind(pSgeWCD, %d, \"%s", "ds"},
    {"\tSgeSetArgBnd2(pSgeWCD, %d, %d, \"%s \"%s", "ddss"},
};

// swd::ReadFields against sscanf on one line: the answer, and the number or
// the word of every conversion made.
inline void CompareCallLine(Differences &d, const std::string &line) {
    const char *l = line.c_str();
    for (size_t which = 0; which < std::size(kCallPatterns); which++) {
        const CallPattern &p = kCallPatterns[which];
        std::array<swd::Field, 5> fields;
        const int engine = swd::ReadFields(line, p.pattern, fields);
        int n[5] = {};
        std::vector<std::vector<char>> w(5, std::vector<char>(line.size() + 1));
        int reference = 0;
        switch (which) {
        case 0:
            reference = sscanf(l, p.pattern, &n[0], &n[1], &n[2], &n[3]);
            break;
        case 1:
            reference = sscanf(l, p.pattern, w[0].data(), &n[1], &n[2], &n[3], w[4].data());
            break;
        case 2:
            reference = sscanf(l, p.pattern, &n[0], w[1].data());
            break;
        default:
            reference = sscanf(l, p.pattern, &n[0], &n[1], w[2].data(), w[3].data());
            break;
        }
        const std::string what = std::string("pattern ") + (p.pattern + 1);
        d.Number(what + " answer", engine, reference);
        for (int k = 0; k < engine && p.kinds[k]; k++) {
            if (p.kinds[k] == 's')
                d.Text(what + " word " + std::to_string(k), std::string(fields[k].word).c_str(),
                       w[k].data());
            else
                d.Number(what + " number " + std::to_string(k), fields[k].number, n[k]);
        }
    }
}

// The whole check on one body. Empty when engine and reference agree.
inline std::string DiffBody(const std::string &interface, const std::string &widget,
                            std::string body) {
    body.resize(std::strlen(body.c_str()));
    Differences d;
    SwdCallbackCode item = {const_cast<char *>("F"), body.data()};
    SutList *callbacks = SutNewListSize(1);
    SutAddList(callbacks, &item);
    SutList *a = ::SwdExtractMapsFromCallbacks(interface.c_str(), widget.c_str(), callbacks);
    SutList *b = vlref::SwdExtractMapsFromCallbacks(interface.c_str(), widget.c_str(), callbacks);
    SutDeleteList(callbacks);
    d.Number("binds", SutSizList(a), SutSizList(b));
    for (int i = 0; i < SutSizList(a) && i < SutSizList(b); i++)
        CompareRecords(d, "bind " + std::to_string(i), SutGetNList(a, i), SutGetNList(b, i),
                       kSPBindKind);
    for (SutList *list : {a, b}) {
        for (int i = 0; i < SutSizList(list); i++) {
            auto *bind = static_cast<SpmSPBind *>(SutGetNList(list, i));
            SpmDestroySPBind(&bind);
        }
        SutDeleteList(list);
    }

    long rowsA = 0, rowsB = 0;
    std::array<char *, 4> x{}, y{};
    ::SwdParseWorkCall(body.c_str(), &rowsA, &x[0], &x[1], &x[2], &x[3]);
    vlref::SwdParseWorkCall(body.c_str(), &rowsB, &y[0], &y[1], &y[2], &y[3]);
    d.Number("work call rows", rowsA, rowsB);
    for (size_t k = 0; k < x.size(); k++) {
        d.Text("work call text " + std::to_string(k), x[k], y[k]);
        std::free(x[k]);
        std::free(y[k]);
    }

    // Every line read by every pattern, with its line end.
    size_t start = 0;
    for (int n = 0; n < 64 && start < body.size(); n++) {
        size_t eol = body.find('\n', start);
        eol = eol == std::string::npos ? body.size() : eol + 1;
        CompareCallLine(d, body.substr(start, eol - start));
        start = eol;
    }
    return d.First();
}

} // namespace vlref

#endif
