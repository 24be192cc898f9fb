// The world that module, page and project tests run in: a distribution
// (created once per test program) whose scripts log how they were called, a
// HOME without option files, and per test a fresh working directory with an
// empty current project and no binding map.
#ifndef VELMORA_TESTS_SUPPORT_TEST_DIST_HPP
#define VELMORA_TESTS_SUPPORT_TEST_DIST_HPP

#include "support/c_values.hpp"
#include "support/capture.hpp"
#include "support/file_texts.hpp"
#include "support/temp_dir.hpp"
#include "velmora.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <initializer_list>
#include <string>

// The distribution: config/Velmora.cfg gives the source suffix ".c"; every
// script of bin/ appends "<script> <argument count>|<first argument>" to the
// file named by VL_SCRIPT_LOG.
inline const std::string &TestDistribution() {
    static const std::string dist = [] {
        static TempDir dir; // removed at exit
        WriteText(dir.File("config/Velmora.cfg"), "Makefile.$VL_SOURCE_SUFFIX : .c\n");
        fs::create_directories(dir.File("home"));
        WriteScripts(dir.File("bin"),
                     {"vlreadprj.sh", "vlwriteprj.sh", "vlreadmodule.sh", "vlwritemodule.sh",
                      "vlreadhtml.sh", "vlwritehtml.sh"},
                     "#!/bin/sh\nprintf '%s %s|%s\\n' \"$(basename \"$0\")\" \"$#\" \"$1\" >> "
                     "\"$VL_SCRIPT_LOG\"\n");
        setenv("VELMORA", dir.Path().c_str(), 1);
        setenv("HOME", dir.File("home").c_str(), 1);
        setenv("PATH", (dir.File("bin") + ":" + std::getenv("PATH")).c_str(), 1);
        return dir.Path();
    }();
    return dist;
}

class Workspace {
  public:
    Workspace() : cwd_((TestDistribution(), dir_.Path())) {
        setenv("VL_SCRIPT_LOG", dir_.File(".scripts").c_str(), 1);
        VlHtmlResetProjName();
        VlHtmlSetProjName("/cgi-bin/test.exe");
        VlProjNewEmpty();
        SwdResetTheMap();
    }
    ~Workspace() {
        VlProjDelete();
        SwdResetTheMap();
    }

    const std::string &Dir() const { return dir_.Path(); }
    void Write(const std::string &name, const std::string &text) const { dir_.Write(name, text); }
    std::string Read(const std::string &name) const { return dir_.Read(name); }
    // The script calls logged so far; the log starts again empty.
    std::string Scripts() const {
        std::string log = dir_.Read(".scripts");
        fs::remove(dir_.File(".scripts"));
        return log;
    }

  private:
    TempDir dir_;
    ScopedCwd cwd_;
};

// A page of the current project with named forms and anchors, as if read.
inline VlHtmlDoc *AddPage(const char *name, std::initializer_list<const char *> forms,
                          std::initializer_list<const char *> anchors = {}) {
    VlHtmlDoc *doc = VlHtmlNew();
    VlHtmlSetName(doc, name);
    if (!doc->forms) doc->forms = SutNewList();
    if (!doc->anchors) doc->anchors = SutNewList();
    for (const char *form : forms) {
        VlHtmlForm *record = VlHtmlFormNew();
        SutAddList(doc->forms, record);
        VlHtmlFormSetName(doc, record, form);
    }
    for (const char *anchor : anchors) {
        VlHtmlAnch *record = VlHtmlAnchNew();
        SutAddList(doc->anchors, record);
        VlHtmlAnchSetName(doc, record, anchor);
    }
    VlHtmlMarkOrigNames(doc);
    SutAddList(theProj->htmlDocs, doc);
    return doc;
}

// A module of the current project for the page (the project owns it).
inline VlModule *AddModule(VlHtmlDoc *page) {
    VlModule *module = VlModuleNew(page);
    SutAddList(theProj->modules, module);
    return module;
}

inline VlFunction *FunctionAt(VlModule *module, int i) {
    return static_cast<VlFunction *>(SutGetNList(module->functions, i));
}
inline VlAlias *AliasAt(VlFunction *fn, int i) {
    return static_cast<VlAlias *>(SutGetNList(fn->aliases, i));
}
// A function's three code sections as "init|func|final" ("<null>" for none).
inline std::string CodeOf(const VlFunction *fn) {
    auto s = [](const char *t) { return std::string(t ? t : "<null>"); };
    return s(fn->initCode) + "|" + s(fn->funcCode) + "|" + s(fn->finalCode);
}

// An applied bind of the map on server "srv" and database "db", run from
// callback ("F" or "A") of widget on page, with one argument and one column
// shown in site of the same page.
inline SpmSPBind *AddBind(const char *name, const char *callback, const char *widget,
                          const char *site = "list", const char *page = "shop.html") {
    SpmSPBind *bind = SpmAddSPBindAndCreateLists(1, 1, 1);
    Set(&bind->servername, "srv");
    Set(&bind->dbname, "db");
    Set(&bind->name, name);
    Set(&bind->altName, name);
    bind->beenApplied = 1;
    SpmCallbackBind *call = Nth<SpmCallbackBind>(bind->callBinds, 0);
    Set(&call->callbackName, callback);
    Set(&call->swidget, widget);
    Set(&call->interface, page);
    SpmColBind *col = Nth<SpmColBind>(bind->colBinds, 0);
    Set(&col->interface, page);
    Set(&col->swidget, site);
    return bind;
}

inline VlHtmlForm *FormOf(VlHtmlDoc *doc, const char *name) {
    return VlHtmlGetFormByName(doc, name);
}
inline VlHtmlAnch *AnchorOf(VlHtmlDoc *doc, const char *name) {
    return VlHtmlGetAnchByName(doc, name);
}

#endif
