// The world a module or project test runs in: a distribution (created once per
// test program) whose scripts log how they were called, a HOME without option
// files, and a fresh working directory per test with an empty current project
// and no binding map. The working directory is restored at the end.
#ifndef VELMORA_TESTS_MODULE_WORKSPACE_HPP
#define VELMORA_TESTS_MODULE_WORKSPACE_HPP

#include "velmora.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>

namespace fs = std::filesystem;

inline std::string readText(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

inline void writeText(const std::string &path, const std::string &text) {
    std::ofstream(path, std::ios::binary) << text;
}

// The distribution: config/Velmora.cfg gives the source suffix ".c"; every
// script of bin/ appends "<script> <argument count>|<first argument>" to the
// file named by VL_SCRIPT_LOG.
inline const std::string &testDistribution() {
    static const std::string dist = [] {
        std::string pattern = (fs::temp_directory_path() / "vldistXXXXXX").string();
        std::string dir = mkdtemp(pattern.data());
        fs::create_directories(dir + "/config");
        fs::create_directories(dir + "/bin");
        fs::create_directories(dir + "/home");
        writeText(dir + "/config/Velmora.cfg", "Makefile.$VL_SOURCE_SUFFIX : .c\n");
        for (const char *script : {"vlreadprj.sh", "vlwriteprj.sh", "vlreadmodule.sh",
                                   "vlwritemodule.sh", "vlreadhtml.sh", "vlwritehtml.sh"}) {
            std::string path = dir + "/bin/" + script;
            writeText(path, "#!/bin/sh\nprintf '%s %s|%s\\n' \"$(basename \"$0\")\" \"$#\" "
                            "\"$1\" >> \"$VL_SCRIPT_LOG\"\n");
            fs::permissions(path, fs::perms::owner_all);
        }
        setenv("VELMORA", dir.c_str(), 1);
        setenv("HOME", (dir + "/home").c_str(), 1);
        setenv("PATH", (dir + "/bin:" + std::getenv("PATH")).c_str(), 1);
        static std::string removeAtExit = dir;
        std::atexit([] {
            std::error_code ec;
            fs::remove_all(removeAtExit, ec);
        });
        return dir;
    }();
    return dist;
}

class Workspace {
  public:
    Workspace() {
        testDistribution();
        old_ = fs::current_path();
        std::string pattern = (fs::temp_directory_path() / "vlworkXXXXXX").string();
        dir_ = mkdtemp(pattern.data());
        fs::current_path(dir_);
        setenv("VL_SCRIPT_LOG", (dir_ + "/.scripts").c_str(), 1);
        VlHtmlResetProjName();
        VlHtmlSetProjName("/cgi-bin/test.exe");
        VlProjNewEmpty();
        SwdResetTheMap();
    }
    ~Workspace() {
        VlProjDelete();
        SwdResetTheMap();
        fs::current_path(old_);
        std::error_code ec;
        fs::remove_all(dir_, ec);
    }
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;

    const std::string &dir() const { return dir_; }
    void write(const std::string &name, const std::string &text) const {
        fs::create_directories(fs::path(dir_ + "/" + name).parent_path());
        writeText(dir_ + "/" + name, text);
    }
    std::string read(const std::string &name) const { return readText(dir_ + "/" + name); }
    // The script calls logged so far; the log starts again empty.
    std::string scripts() const {
        std::string log = readText(dir_ + "/.scripts");
        fs::remove(dir_ + "/.scripts");
        return log;
    }

  private:
    fs::path old_;
    std::string dir_;
};

// A page of the current project with named forms and anchors, as if read.
inline VlHtmlDoc *addPage(const char *name, std::initializer_list<const char *> forms,
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
inline VlModule *addModule(VlHtmlDoc *page) {
    VlModule *module = VlModuleNew(page);
    SutAddList(theProj->modules, module);
    return module;
}

inline VlHtmlForm *formOf(VlHtmlDoc *doc, const char *name) {
    return VlHtmlGetFormByName(doc, name);
}
inline VlHtmlAnch *anchorOf(VlHtmlDoc *doc, const char *name) {
    return VlHtmlGetAnchByName(doc, name);
}

// Standard output printed while fn runs.
template <typename Fn> std::string printed(Fn fn) {
    testing::internal::CaptureStdout();
    fn();
    fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

#endif
