// Fuzz target: the module file reader. A scratch project holds the page
// shop.html (form "order", anchor "home") and cart.html (form "pay"); the
// input is written as the module file, read, its aliases resolved, written
// back and deleted. The binding map that the function code fills is reset
// every run, so it does not grow; the files are the same two every run,
// in a scratch directory removed at exit.
#include "support.hpp"

namespace {

// Absolute paths: the working directory stays where libFuzzer was started, so
// relative corpus and artifact paths keep working.
std::string moduleFile;
std::string copyFile;

void AddPage(const char *name, const char *form, const char *anchor) {
    VlHtmlDoc *doc = VlHtmlNew();
    VlHtmlSetName(doc, name);
    doc->forms = SutNewList();
    doc->anchors = SutNewList();
    VlHtmlForm *f = VlHtmlFormNew();
    SutAddList(doc->forms, f);
    VlHtmlFormSetName(doc, f, form);
    if (anchor) {
        VlHtmlAnch *a = VlHtmlAnchNew();
        SutAddList(doc->anchors, a);
        VlHtmlAnchSetName(doc, a, anchor);
    }
    VlHtmlMarkOrigNames(doc);
    SutAddList(theProj->htmlDocs, doc);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    fuzz::Distribution();
    moduleFile = fuzz::ScratchDir() + "/shop.c";
    copyFile = fuzz::ScratchDir() + "/copy.c";
    VlHtmlSetProjName("/cgi-bin/shop.exe");
    VlProjNewEmpty();
    theProj->options =
        VlAppendOption(theProj->options, strdup("Project.Call Read/Write Scripts : False"));
    AddPage("shop.html", "order", "home");
    AddPage("cart.html", "pay", nullptr);
    std::atexit([] { VlProjDelete(); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::WriteFile(moduleFile, fuzz::Text(data, size));
    VlModule *module = VlModuleNewFromFile(moduleFile.c_str());
    if (module) {
        VlModuleResolveAliases(module);
        VlModuleWrite(module, copyFile.c_str(), 1);
        VlModuleDelete(module);
    }
    SwdResetTheMap();
    return 0;
}
