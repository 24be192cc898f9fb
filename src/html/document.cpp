// The document record of a page and the rules that name its forms, anchors and
// sites: full names tie an activator to the page's module, generated names fill
// the gaps, and the orig copies remember how the page stands on disk.
#include "html/document.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "html/page.h"
#include "html/store.hpp"
#include "util/heap.hpp"
#include "util/list.h"
#include "util/list.hpp"
#include "util/strings.h"

namespace {

// Where a named form's ACTION and a named anchor's HREF point until the project
// is named: the usual place of a CGI program on a local server.
constexpr const char *kDefaultProjUrl = "http://localhost/cgi-bin/";

char *theProjUrl = nullptr;

using vlstore::CopyField;
using vlstore::SetField;
using vlstore::ShareField;

bool IsEmpty(const char *s) {
    return s == nullptr || *s == '\0';
}

// "<short>__<letter><modName>", kept where the record keeps its strings.
char *MakeFullName(const VlHtmlDoc *doc, VlHtmlStore *store, const char *shortName, char letter) {
    std::string s = shortName;
    s += "__";
    s += letter;
    s += doc->modName ? doc->modName : "";
    return vlstore::Copy(store, s);
}

// The part of a full name before its first "__F" or "__A", or null.
char *ShortName(const char *fullName, const char *mark) {
    if (IsEmpty(fullName)) return nullptr;
    const char *at = strstr(fullName, mark);
    if (!at) return nullptr;
    return StrNDup(fullName, static_cast<int>(at - fullName));
}

char *FuncName(const char *fullName, const char *mark, char letter) {
    char *shortName = ShortName(fullName, mark);
    if (!shortName) return nullptr;
    std::string s(1, letter);
    s += shortName;
    free(shortName);
    return VlHeapCopy(s);
}

std::string NextGeneratedName(const char *kind, int *counter) {
    std::string s = kind;
    s += std::to_string((*counter)++);
    return s;
}

// Releases a record's strings: those of its store stay with the store.
template <class... Fields> void ReleaseFields(const VlHtmlStore *store, Fields... fields) {
    (vlstore::Release(store, fields), ...);
}

template <class Record> Record *NewRecord() {
    return vlstore::NewRecord<Record>(nullptr);
}

// Deletes a list and its records. The records of the page's store go with
// the store, strings and all (a form of it still has its list of elements
// to end); any other record is deleted on its own. Which is which is told
// by the record's address, so the page's records are not read again. A list
// placed in the store is vacated, not freed.
template <class Record, class Deleter>
void DeleteList(SutList *list, const VlHtmlStore *pageStore, Deleter del) {
    const int count = SutSizList(list);
    for (int i = 0; i < count; i++) {
        auto *record = static_cast<Record *>(list->items[i]);
        if (!record) continue;
        if (!vlstore::Holds(pageStore, record))
            del(record);
        else if constexpr (std::is_same_v<Record, VlHtmlForm>)
            DeleteList<VlHtmlFormElement>(record->elements, pageStore, VlHtmlFormElementDelete);
    }
    if (vlstore::Holds(pageStore, list))
        sutlist::Vacate(list);
    else
        SutDeleteList(list);
}

// The position of the first record of each full name and, among the records
// without one, of each URL: a lookup by name answers with the smaller of the
// two, which is the record a walk of the list would meet first.
struct NameIndex {
    std::unordered_map<std::string, int> byFullName, byUrl;
};

template <class Record, class UrlOf> NameIndex BuildIndex(SutList *list, UrlOf urlOf) {
    NameIndex index;
    for (int i = 0; i < SutSizList(list); i++) {
        auto *r = static_cast<Record *>(SutGetNList(list, i));
        if (!r) continue;
        if (!IsEmpty(r->fullName))
            index.byFullName.emplace(r->fullName, i);
        else if (urlOf(r))
            index.byUrl.emplace(urlOf(r), i);
    }
    return index;
}

// The page whose lookups go through indexes, between VlHtmlBeginNameLookups
// and VlHtmlEndNameLookups; each index is built at its first lookup.
struct LookupSession {
    VlHtmlDoc *doc = nullptr;
    bool formsBuilt = false, anchorsBuilt = false;
    NameIndex forms, anchors;
};
LookupSession session;

// Shared by the form and anchor lookups: the first record whose full name
// equals the built one, or, while unnamed, whose URL equals the short name.
template <class Record, class UrlOf>
Record *FindByName(VlHtmlDoc *doc, SutList *list, const char *shortName, char letter, UrlOf urlOf,
                   NameIndex *index) {
    if (!doc || IsEmpty(shortName)) return nullptr;
    char *full = MakeFullName(doc, nullptr, shortName, letter);
    Record *found = nullptr;
    if (index) {
        int at = -1;
        if (auto hit = index->byFullName.find(full ? full : ""); hit != index->byFullName.end())
            at = hit->second;
        if (auto hit = index->byUrl.find(shortName); hit != index->byUrl.end())
            at = at < 0 ? hit->second : std::min(at, hit->second);
        if (at >= 0) found = static_cast<Record *>(SutGetNList(list, at));
        free(full);
        return found;
    }
    for (int i = 0; i < SutSizList(list) && !found; i++) {
        auto *r = static_cast<Record *>(SutGetNList(list, i));
        if (!r) continue;
        if (!IsEmpty(r->fullName)) {
            if (strcmp(r->fullName, full) == 0) found = r;
        } else if (urlOf(r) && strcmp(urlOf(r), shortName) == 0) {
            found = r;
        }
    }
    free(full);
    return found;
}

} // namespace

extern "C" {

int VlHtmlSetProjName(const char *url) {
    if (IsEmpty(url)) return 0;
    VlReplaceString(&theProjUrl, url);
    return 1;
}

const char *VlHtmlGetProjName(void) {
    return theProjUrl;
}

void VlHtmlResetProjName(void) {
    free(theProjUrl);
    theProjUrl = nullptr;
}

VlHtmlDoc *VlHtmlNew(void) {
    if (!theProjUrl) theProjUrl = StrDup(kDefaultProjUrl);
    return NewRecord<VlHtmlDoc>();
}

VlHtmlForm *VlHtmlFormNew(void) {
    return NewRecord<VlHtmlForm>();
}
VlHtmlAnch *VlHtmlAnchNew(void) {
    return NewRecord<VlHtmlAnch>();
}
VlHtmlSite *VlHtmlSiteNew(void) {
    return NewRecord<VlHtmlSite>();
}
VlHtmlFormElement *VlHtmlFormElementNew(void) {
    return NewRecord<VlHtmlFormElement>();
}

void VlHtmlFormElementDelete(VlHtmlFormElement *element) {
    if (!element) return;
    ReleaseFields(element->store, element->name, element->type, element->formName,
                  element->origFormName);
    vlstore::ReleaseRecord(element);
}

void VlHtmlFormDelete(VlHtmlForm *form) {
    if (!form) return;
    ReleaseFields(form->store, form->fullName, form->action, form->method, form->origFullName,
                  form->origAction, form->origMethod);
    DeleteList<VlHtmlFormElement>(form->elements, form->store, VlHtmlFormElementDelete);
    vlstore::ReleaseRecord(form);
}

void VlHtmlAnchDelete(VlHtmlAnch *anchor) {
    if (!anchor) return;
    ReleaseFields(anchor->store, anchor->fullName, anchor->url, anchor->origFullName,
                  anchor->origUrl, anchor->urlAttr);
    vlstore::ReleaseRecord(anchor);
}

void VlHtmlSiteDelete(VlHtmlSite *site) {
    if (!site) return;
    ReleaseFields(site->store, site->name, site->origName);
    vlstore::ReleaseRecord(site);
}

void VlHtmlDelete(VlHtmlDoc *doc) {
    if (!doc) return;
    free(doc->name);
    free(doc->modName);
    free(doc->path);
    DeleteList<VlHtmlForm>(doc->forms, doc->store, VlHtmlFormDelete);
    DeleteList<VlHtmlSite>(doc->sites, doc->store, VlHtmlSiteDelete);
    DeleteList<VlHtmlAnch>(doc->anchors, doc->store, VlHtmlAnchDelete);
    vlstore::StoreDelete(doc->store);
    free(doc);
}

void VlHtmlSetString(VlHtmlStore *store, char **field, const char *value) {
    if (field) CopyField(store, field, value);
}

char *VlHtmlGetName(VlHtmlDoc *doc) {
    return doc ? doc->name : nullptr;
}
char *VlHtmlGetModName(VlHtmlDoc *doc) {
    return doc ? doc->modName : nullptr;
}

char *VlHtmlFormGetName(VlHtmlForm *form) {
    return form ? ShortName(form->fullName, "__F") : nullptr;
}
char *VlHtmlAnchGetName(VlHtmlAnch *anchor) {
    return anchor ? ShortName(anchor->fullName, "__A") : nullptr;
}
char *VlHtmlFormGetFuncName(VlHtmlForm *form) {
    return form ? FuncName(form->fullName, "__F", 'F') : nullptr;
}
char *VlHtmlAnchGetFuncName(VlHtmlAnch *anchor) {
    return anchor ? FuncName(anchor->fullName, "__A", 'A') : nullptr;
}
char *VlHtmlFormGetFullName(VlHtmlForm *form) {
    return form && !IsEmpty(form->fullName) ? form->fullName : nullptr;
}
char *VlHtmlAnchGetFullName(VlHtmlAnch *anchor) {
    return anchor && !IsEmpty(anchor->fullName) ? anchor->fullName : nullptr;
}

int VlHtmlSplitFuncName(const char *fullName, char **restOut, char *typeOut, char **shortOut) {
    if (!fullName || !restOut || !typeOut || !shortOut) return 0;
    const char *at = strstr(fullName, "__");
    if (!at) return 0;
    *shortOut = StrNDup(fullName, static_cast<int>(at - fullName));
    *typeOut = at[2];
    *restOut = StrDup(at[2] ? at + 3 : at + 2);
    return 1;
}

VlHtmlForm *VlHtmlGetFormByName(VlHtmlDoc *doc, const char *shortName) {
    auto action = [](VlHtmlForm *f) { return f->action; };
    NameIndex *index = nullptr;
    if (doc && doc == session.doc) {
        if (!session.formsBuilt) session.forms = BuildIndex<VlHtmlForm>(doc->forms, action);
        session.formsBuilt = true;
        index = &session.forms;
    }
    return FindByName<VlHtmlForm>(doc, doc ? doc->forms : nullptr, shortName, 'F', action, index);
}

VlHtmlAnch *VlHtmlGetAnchByName(VlHtmlDoc *doc, const char *shortName) {
    auto url = [](VlHtmlAnch *a) { return a->url; };
    NameIndex *index = nullptr;
    if (doc && doc == session.doc) {
        if (!session.anchorsBuilt) session.anchors = BuildIndex<VlHtmlAnch>(doc->anchors, url);
        session.anchorsBuilt = true;
        index = &session.anchors;
    }
    return FindByName<VlHtmlAnch>(doc, doc ? doc->anchors : nullptr, shortName, 'A', url, index);
}

void VlHtmlBeginNameLookups(VlHtmlDoc *doc) {
    session = LookupSession{};
    session.doc = doc;
}

void VlHtmlEndNameLookups(void) {
    session = LookupSession{};
}

int VlHtmlIsUniqueFormName(VlHtmlDoc *doc, const char *shortName) {
    if (!doc || IsEmpty(shortName)) return 0;
    return VlHtmlGetFormByName(doc, shortName) ? 0 : 1;
}

int VlHtmlIsUniqueAnchName(VlHtmlDoc *doc, const char *shortName) {
    if (!doc || IsEmpty(shortName)) return 0;
    return VlHtmlGetAnchByName(doc, shortName) ? 0 : 1;
}

SutList *VlHtmlGetForms(VlHtmlDoc *doc) {
    if (!doc) return nullptr;
    SutList *out = SutNewList();
    for (int i = 0; i < SutSizList(doc->forms); i++) {
        auto *f = static_cast<VlHtmlForm *>(SutGetNList(doc->forms, i));
        if (!f) continue;
        if (!IsEmpty(f->fullName)) {
            char *shortName = ShortName(f->fullName, "__F");
            SutAddList(out, shortName ? shortName : StrDup(f->fullName));
        } else {
            SutAddList(out, VlHeapCopy(std::string(" ACTION=") + (f->action ? f->action : "")));
        }
    }
    return out;
}

SutList *VlHtmlGetAnchs(VlHtmlDoc *doc) {
    if (!doc) return nullptr;
    SutList *out = SutNewList();
    for (int i = 0; i < SutSizList(doc->anchors); i++) {
        auto *a = static_cast<VlHtmlAnch *>(SutGetNList(doc->anchors, i));
        if (!a) continue;
        if (!IsEmpty(a->fullName)) {
            char *shortName = ShortName(a->fullName, "__A");
            SutAddList(out, shortName ? shortName : StrDup(a->fullName));
        } else {
            std::string s = " ";
            s += a->urlAttr ? a->urlAttr : "HREF";
            s += "=";
            s += a->url ? a->url : "";
            SutAddList(out, VlHeapCopy(s));
        }
    }
    return out;
}

SutList *VlHtmlGetSites(VlHtmlDoc *doc) {
    if (!doc) return nullptr;
    SutList *out = SutNewList();
    for (int i = 0; i < SutSizList(doc->sites); i++) {
        auto *s = static_cast<VlHtmlSite *>(SutGetNList(doc->sites, i));
        if (s && !IsEmpty(s->name)) SutAddList(out, s->name);
    }
    return out;
}

SutList *VlHtmlGetFormElems(VlHtmlDoc *doc, const char *formName) {
    VlHtmlForm *form = VlHtmlGetFormByName(doc, formName);
    if (!form) return nullptr;
    SutList *out = SutNewList();
    for (int i = 0; i < SutSizList(form->elements); i++) {
        auto *e = static_cast<VlHtmlFormElement *>(SutGetNList(form->elements, i));
        if (e && e->name) SutAddList(out, e->name);
    }
    return out;
}

int VlHtmlFormSetName(VlHtmlDoc *doc, VlHtmlForm *form, const char *shortName) {
    if (!doc || !form || IsEmpty(shortName)) return 1;
    SetField(form->store, &form->fullName, MakeFullName(doc, form->store, shortName, 'F'));
    form->named = 1;
    doc->changed = 1;
    doc->formsChanged = 1;
    CopyField(form->store, &form->method, "post");
    CopyField(form->store, &form->action, theProjUrl);
    return 0;
}

int VlHtmlAnchSetName(VlHtmlDoc *doc, VlHtmlAnch *anchor, const char *shortName) {
    if (!doc || !anchor || IsEmpty(shortName)) return 1;
    SetField(anchor->store, &anchor->fullName, MakeFullName(doc, anchor->store, shortName, 'A'));
    doc->changed = 1;
    doc->anchorsChanged = 1;
    CopyField(anchor->store, &anchor->url, theProjUrl);
    return 0;
}

int VlHtmlNameForm(VlHtmlDoc *doc, const char *oldName, const char *newName) {
    if (!doc || IsEmpty(oldName) || IsEmpty(newName)) return 1;
    VlHtmlForm *form = VlHtmlGetFormByName(doc, oldName);
    return form ? VlHtmlFormSetName(doc, form, newName) : 1;
}

int VlHtmlNameAnch(VlHtmlDoc *doc, const char *oldName, const char *newName) {
    if (!doc || IsEmpty(oldName) || IsEmpty(newName)) return 1;
    VlHtmlAnch *anchor = VlHtmlGetAnchByName(doc, oldName);
    return anchor ? VlHtmlAnchSetName(doc, anchor, newName) : 1;
}

int VlHtmlNameFormByPos(VlHtmlDoc *doc, int index, const char *newName) {
    if (!doc || IsEmpty(newName)) return 1;
    auto *form = static_cast<VlHtmlForm *>(SutGetNList(doc->forms, index));
    return form ? VlHtmlFormSetName(doc, form, newName) : 1;
}

int VlHtmlNameAnchByPos(VlHtmlDoc *doc, int index, const char *newName) {
    if (!doc || IsEmpty(newName)) return 1;
    auto *anchor = static_cast<VlHtmlAnch *>(SutGetNList(doc->anchors, index));
    return anchor ? VlHtmlAnchSetName(doc, anchor, newName) : 1;
}

int VlHtmlGenFormNames(VlHtmlDoc *doc) {
    if (!doc) return 1;
    for (int i = 0; i < SutSizList(doc->forms); i++) {
        auto *f = static_cast<VlHtmlForm *>(SutGetNList(doc->forms, i));
        if (!f || !IsEmpty(f->fullName)) continue;
        const std::string generated = NextGeneratedName("form", &doc->nextFormNumber);
        SetField(f->store, &f->fullName, MakeFullName(doc, f->store, generated.c_str(), 'F'));
        CopyField(f->store, &f->method, "post");
        CopyField(f->store, &f->action, theProjUrl);
        doc->changed = 1;
        doc->formsChanged = 1;
    }
    return 0;
}

int VlHtmlGenAnchNames(VlHtmlDoc *doc) {
    if (!doc) return 1;
    for (int i = 0; i < SutSizList(doc->anchors); i++) {
        auto *a = static_cast<VlHtmlAnch *>(SutGetNList(doc->anchors, i));
        if (!a || !IsEmpty(a->fullName)) continue;
        const std::string generated = NextGeneratedName("anch", &doc->nextAnchNumber);
        SetField(a->store, &a->fullName, MakeFullName(doc, a->store, generated.c_str(), 'A'));
        CopyField(a->store, &a->url, theProjUrl);
        doc->changed = 1;
        doc->anchorsChanged = 1;
    }
    return 0;
}

int VlHtmlGenSiteNames(VlHtmlDoc *doc) {
    if (!doc) return 1;
    for (int i = 0; i < SutSizList(doc->sites); i++) {
        auto *s = static_cast<VlHtmlSite *>(SutGetNList(doc->sites, i));
        if (!s || !IsEmpty(s->name)) continue;
        SetField(s->store, &s->name,
                 vlstore::Copy(s->store, NextGeneratedName("site", &doc->nextSiteNumber)));
        doc->changed = 1;
        doc->sitesChanged = 1;
    }
    return 0;
}

int VlSetLastSiteNumber(VlHtmlDoc *doc) {
    if (!doc) return 0;
    // The number read last stays in play when a name does not match; since it
    // was already weighed, the result is one more than the highest match.
    int highest = 0, number = 0;
    for (int i = 0; i < SutSizList(doc->sites); i++) {
        auto *s = static_cast<VlHtmlSite *>(SutGetNList(doc->sites, i));
        if (s && s->name) sscanf(s->name, "site%d", &number);
        if (number > highest) highest = number;
    }
    doc->nextSiteNumber = highest + 1;
    return 1;
}

int VlHtmlSetFormURL(VlHtmlDoc *doc, VlHtmlForm *form, const char *url) {
    if (!doc || !form || IsEmpty(url)) return 0;
    if (form->action && strcmp(form->action, url) == 0) return 1;
    CopyField(form->store, &form->action, url);
    doc->changed = 1;
    doc->formsChanged = 1;
    return 1;
}

int VlHtmlSetAnchURL(VlHtmlDoc *doc, VlHtmlAnch *anchor, const char *url) {
    if (!doc || !anchor || IsEmpty(url)) return 0;
    if (anchor->url && strcmp(anchor->url, url) == 0) return 1;
    CopyField(anchor->store, &anchor->url, url);
    doc->changed = 1;
    doc->anchorsChanged = 1;
    return 1;
}

int VlHtmlMarkOrigNames(VlHtmlDoc *doc) {
    if (!doc) return 0;
    for (int i = 0; i < SutSizList(doc->forms); i++) {
        auto *f = static_cast<VlHtmlForm *>(SutGetNList(doc->forms, i));
        if (!f) continue;
        ShareField(f->store, &f->origFullName, f->fullName);
        ShareField(f->store, &f->origAction, f->action);
        ShareField(f->store, &f->origMethod, f->method);
        for (int j = 0; j < SutSizList(f->elements); j++) {
            auto *e = static_cast<VlHtmlFormElement *>(SutGetNList(f->elements, j));
            if (e) ShareField(e->store, &e->origFormName, e->formName);
        }
    }
    for (int i = 0; i < SutSizList(doc->sites); i++) {
        auto *s = static_cast<VlHtmlSite *>(SutGetNList(doc->sites, i));
        if (s) ShareField(s->store, &s->origName, s->name);
    }
    for (int i = 0; i < SutSizList(doc->anchors); i++) {
        auto *a = static_cast<VlHtmlAnch *>(SutGetNList(doc->anchors, i));
        if (!a) continue;
        ShareField(a->store, &a->origFullName, a->fullName);
        ShareField(a->store, &a->origUrl, a->url);
    }
    return 1;
}

int VlHtmlSetName(VlHtmlDoc *doc, const char *path) {
    if (!doc || IsEmpty(path)) return 0;
    VlReplaceString(&doc->name, path);
    VlReplaceString(&doc->path, path);
    char *base = VlGetFileFromFullPath(path);
    std::string mod = base ? base : "";
    free(base);
    for (char &c : mod)
        if (!isalnum(static_cast<unsigned char>(c)) || static_cast<unsigned char>(c) > 127) c = '_';
    free(doc->modName);
    doc->modName = VlHeapCopy(mod);
    return 1;
}

int VlHtmlNeedsSave(VlHtmlDoc *doc) {
    if (!doc || IsEmpty(doc->name)) return 0;
    return doc->sitesChanged || doc->formsChanged || doc->anchorsChanged ? 1 : 0;
}

int VlHtmlIsChanged(VlHtmlDoc *doc) {
    if (!doc || IsEmpty(doc->name)) return 0;
    return VlGetFileModTime(doc->name) != doc->modTime ? 1 : 0;
}

void VlHtmlPrint(VlHtmlDoc *doc) {
    if (!doc) return;
    auto line = [](const char *format, const char *value) {
        if (value) fprintf(stderr, format, value);
    };
    if (doc->name) fprintf(stderr, "Filename----> %s %ld\n", doc->name, (long)doc->modTime);
    for (int i = 0; i < SutSizList(doc->forms); i++) {
        auto *f = static_cast<VlHtmlForm *>(SutGetNList(doc->forms, i));
        if (!f) continue;
        fputs("Form:\n", stderr);
        line("\tMethod---->%s\n", f->method);
        line("\tAction---->%s\n", f->action);
        line("\tName---->%s\n", f->fullName);
        fputs("\tElements:\n", stderr);
        for (int j = 0; j < SutSizList(f->elements); j++) {
            auto *e = static_cast<VlHtmlFormElement *>(SutGetNList(f->elements, j));
            if (!e) continue;
            line("\t\tInputName----->%s\n", e->name);
            line("\t\tInputType----->%s\n", e->type);
        }
    }
    for (int i = 0; i < SutSizList(doc->sites); i++) {
        auto *s = static_cast<VlHtmlSite *>(SutGetNList(doc->sites, i));
        if (s) line("\tSiteName---->%s\n", s->name);
    }
    for (int i = 0; i < SutSizList(doc->anchors); i++) {
        auto *a = static_cast<VlHtmlAnch *>(SutGetNList(doc->anchors, i));
        if (!a) continue;
        line("\tAnchorName---->%s\n", a->fullName);
        line("\tAnchorAction---->%s\n", a->url);
    }
}

} // extern "C"
