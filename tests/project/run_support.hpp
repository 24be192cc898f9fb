// Helpers of the tests of writing and running a project: the templates of the
// test distribution, option lists, pages read from disk, and the scripts that
// the scripted runs call, which log each call on one line with every argument
// in brackets (so a name with a blank shows as one argument).
#ifndef VELMORA_TESTS_PROJECT_RUN_SUPPORT_HPP
#define VELMORA_TESTS_PROJECT_RUN_SUPPORT_HPP

#include "support/file_texts.hpp"
#include "support/test_dist.hpp"

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <string>
#include <thread>

// Installs the logging scripts of the scripted runs (once per test program).
inline void InstallRunScripts() {
    static const bool done = (WriteScripts(TestDistribution() + "/bin",
                                           {"vlinst.sh", "vltest.sh", "vlrel1.sh", "vlrel2.sh",
                                            "vlmake.sh", "vledithtml.sh", "vlbrowser.sh"}),
                              true);
    (void)done;
}

inline void WriteTemplate(const char *name, const std::string &text) {
    WriteText(TestDistribution() + "/config/" + name, text);
}

// Replaces the current project's options by copies of lines.
inline void SetOptions(std::initializer_list<const char *> lines) {
    SutDestroyList(theProj->options);
    theProj->options = SutNewList();
    for (const char *line : lines)
        SutAddList(theProj->options, VlCopyString(line));
}

// A page of the current project read from disk (so it has a working copy),
// with its module.
inline VlHtmlDoc *ReadPage(const Workspace &ws, const char *name, const std::string &text) {
    ws.Write(name, text);
    VlHtmlDoc *doc = VlHtmlNewFromFile(name);
    SutAddList(theProj->htmlDocs, doc);
    AddModule(doc);
    return doc;
}

// Waits (up to five seconds) until the script log holds count lines, for
// scripts started without waiting, and returns the log.
inline std::string WaitForLog(const Workspace &ws, int count) {
    for (int i = 0; i < 500; i++) {
        const std::string log = ws.Read(".scripts");
        if (std::count(log.begin(), log.end(), '\n') >= count) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return ws.Scripts();
}

#endif
