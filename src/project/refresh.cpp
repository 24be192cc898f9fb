/* Refreshing a page that was read again after it changed on disk. Modules and
 * binding maps point at the old reading's records; every form and anchor that
 * is still on the page has those references moved to its new record, and what
 * has gone is removed from the modules and reported to the binding map. */
#include "project/refresh.h"

#include <deque>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "bindcode/upkeep.h"
#include "project/lookup.h"
#include "util/heap.hpp"

namespace {

const char *OrigLocation(const VlHtmlForm *form) {
    return form->origAction;
}
const char *OrigLocation(const VlHtmlAnch *anchor) {
    return anchor->origUrl;
}

/* The new reading's records of one kind, indexed so that each old record is
 * matched in constant time: by full name (first one wins) and, for the still
 * unnamed ones, by original action or URL in page order. */
template <typename Record> struct Index {
    std::unordered_map<std::string_view, Record *> byName;
    std::unordered_map<std::string_view, std::deque<Record *>> unnamedByOrig;

    explicit Index(SutList *records) {
        for (int i = 0; i < SutSizList(records); i++) {
            auto *record = static_cast<Record *>(SutGetNList(records, i));
            if (record->fullName)
                byName.emplace(record->fullName, record);
            else if (OrigLocation(record))
                unnamedByOrig[OrigLocation(record)].push_back(record);
        }
    }
};

/* The new record that takes the old one's place, or null. An unnamed record
 * with the old one's original location is given the old short name. */
template <typename Record, typename ShortName, typename SetName>
Record *Survivor(Index<Record> &index, Record *old, VlHtmlDoc *newDoc, ShortName shortName,
                 SetName setName) {
    if (auto it = index.byName.find(old->fullName); it != index.byName.end()) return it->second;
    if (!OrigLocation(old)) return nullptr;
    auto it = index.unnamedByOrig.find(OrigLocation(old));
    if (it == index.unnamedByOrig.end() || it->second.empty()) return nullptr;
    // The first record with that location is taken even when the name cannot be had.
    Record *match = it->second.front();
    it->second.pop_front();
    VlCharPtr name(shortName(old));
    setName(newDoc, match, name.get());
    if (match->fullName) index.byName.emplace(match->fullName, match);
    return match;
}

void RefreshSites(VlHtmlDoc *oldDoc, VlHtmlDoc *newDoc, const char *pageName) {
    std::unordered_set<std::string_view> present;
    for (int i = 0; i < SutSizList(newDoc->sites); i++) {
        auto *site = static_cast<VlHtmlSite *>(SutGetNList(newDoc->sites, i));
        if (site->name) present.insert(site->name);
    }
    for (int i = 0; i < SutSizList(oldDoc->sites); i++) {
        auto *site = static_cast<VlHtmlSite *>(SutGetNList(oldDoc->sites, i));
        if (site->name && !present.contains(site->name))
            SwdUpdateMapDeletedSwidget(site->name, pageName, "S", nullptr);
    }
}

void RefreshForms(VlHtmlDoc *oldDoc, VlHtmlDoc *newDoc, const char *pageName) {
    Index<VlHtmlForm> index(newDoc->forms);
    for (int i = 0; i < SutSizList(oldDoc->forms); i++) {
        auto *form = static_cast<VlHtmlForm *>(SutGetNList(oldDoc->forms, i));
        if (!VlHtmlFormGetFullName(form)) continue;
        if (VlHtmlForm *match =
                Survivor(index, form, newDoc, VlHtmlFormGetName, VlHtmlFormSetName)) {
            VlProjChangeFormPtr(oldDoc, form, match);
            continue;
        }
        VlCharPtr name(VlHtmlFormGetName(form));
        VlProjDeleteForm(oldDoc, form, 1);
        SwdUpdateMapDeletedSwidget(name.get(), pageName, "F", nullptr);
    }
}

void RefreshAnchors(VlHtmlDoc *oldDoc, VlHtmlDoc *newDoc, const char *pageName) {
    Index<VlHtmlAnch> index(newDoc->anchors);
    for (int i = 0; i < SutSizList(oldDoc->anchors); i++) {
        auto *anchor = static_cast<VlHtmlAnch *>(SutGetNList(oldDoc->anchors, i));
        if (!VlHtmlAnchGetFullName(anchor)) continue;
        if (VlHtmlAnch *match =
                Survivor(index, anchor, newDoc, VlHtmlAnchGetName, VlHtmlAnchSetName)) {
            VlProjChangeAnchPtr(oldDoc, anchor, match);
            continue;
        }
        // Reported before it is removed, unlike a form.
        VlCharPtr name(VlHtmlAnchGetName(anchor));
        SwdUpdateMapDeletedSwidget(name.get(), pageName, "A", nullptr);
        VlProjDeleteAnch(oldDoc, anchor, 1);
    }
}

} // namespace

extern "C" {

int VlHtmlRefresh(VlHtmlDoc *oldDoc, VlHtmlDoc *newDoc) {
    if (!oldDoc || !newDoc) return 1;
    const char *pageName = VlHtmlGetName(oldDoc);
    RefreshSites(oldDoc, newDoc, pageName);
    RefreshForms(oldDoc, newDoc, pageName);
    RefreshAnchors(oldDoc, newDoc, pageName);
    return 0;
}

} // extern "C"
