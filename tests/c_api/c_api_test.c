/* Proves the C interface that generated programs use: this C11 file includes
 * the umbrella header and links against the engine library. */
#define _POSIX_C_SOURCE 200809L /* mkstemp, unsetenv, close */
#include "velmora.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int failures = 0;

#define CHECK(cond)                                                                                \
    do {                                                                                           \
        if (!(cond)) {                                                                             \
            fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond);               \
            failures++;                                                                            \
        }                                                                                          \
    } while (0)

/* Compares an owned result with the expected text and releases it. */
static int takeEq(char *s, const char *expected) {
    int same = s && expected ? strcmp(s, expected) == 0 : s == NULL && expected == NULL;
    free(s);
    return same;
}

static void driverSubstitutes(void) {
    CHECK(strcmp(VlCatGets(10, 1, "text"), "text") == 0);
    const char *text = "default";
    CHECK(VlCatGets(10, 2, text) == text);
    CHECK(strcmp(GCatb(1, 2), " ") == 0);
}

static void lists(void) {
    SutList *l = SutNewList();
    int a = 1, b = 2;
    CHECK(SutAddList(l, &a) == &a);
    CHECK(SutAddNList(l, 0, &b) == &b);
    CHECK(SutSizList(l) == 2 && SutGetNList(l, 0) == &b);
    CHECK(SutGetPosFromItem(l, &a) == 1);
    CHECK(SutRemoveList(l) == &a);
    CHECK(SutDeleteList(l) == 0);
    CHECK(SutSizList(NULL) == -1);
}

static void strings(void) {
    CHECK(takeEq(VlStrMCat("a", "b", "c", (char *)NULL), "abc"));
    CHECK(takeEq(VlCopyString(NULL), ""));
    CHECK(StrDup(NULL) == NULL);
    CHECK(takeEq(VlStrSubs("aaa", "aa", "b"), "ba"));
    CHECK(takeEq(VlMakeEscapedString("it's"), "'it''s'"));
    CHECK(takeEq(VlGetDirFromFullPath("/a/b.html"), "/a"));
    CHECK(VlDelimStrToChar("^i") == 9);

    SutList *keys = SutNewList(), *values = SutNewList();
    SutAddList(keys, VlCopyString("$VL_NAME"));
    SutAddList(values, VlCopyString("shop"));
    CHECK(takeEq(VlStrSubsList("all: $VL_NAME\n", keys, values, "$VL_"), "all: shop\n"));
    SutDestroyList(keys);
    SutDestroyList(values);
}

static void options(void) {
    SutList *l = VlOptionGetFromString("Project.Name : shop\nno colon\nTest.Port : 80 \r\n");
    CHECK(SutSizList(l) == 2);
    int at = -1;
    CHECK(takeEq(VlGetOption(l, "Test.Port", &at), "80 \r") && at == 1);
    CHECK(takeEq(VlGetStrippedOptionValueByCat(l, "Test.", "Port"), "80"));
    l = VlAppendOption(l, VlCopyString("Project.Name : mall"));
    CHECK(takeEq(VlGetOptionValue(l, "Project.Name"), "mall"));
    CHECK(VlDeleteOptions(l, "Project.Name") == 1);
    l = VlVaOptionsMerge(l, "A : 1", (char *)NULL);
    CHECK(SutSizList(l) == 2);
    SutDestroyList(l);
    SutList *ints = VlOptionGetIntList("3, 4");
    CHECK(SutSizList(ints) == 2 && (intptr_t)SutGetNList(ints, 1) == 4);
    SutDeleteList(ints);
}

static void filesAndProcesses(void) {
    char path[] = "/tmp/vlcapiXXXXXX";
    int fd = mkstemp(path);
    CHECK(fd >= 0);
    if (fd < 0) return;
    close(fd);
    CHECK(VlWriteStrToFile(path, "a\nb\n") == 0);
    CHECK(VlFileExists(path) == 1);
    time_t when = 0;
    CHECK(takeEq(VlReadFileAndMod(path, &when), "a\nb\n") && when > 0);
    SutList *lines = VlParseFileString("a\nb\n", "\n", NULL);
    CHECK(SutSizList(lines) == 2);
    SutDestroyList(lines);
    CHECK(takeEq(VlUnixToDos("a\nb"), "a\r\nb"));
    CHECK(VlLaunchAndBlock("exit 2") == 2 << 8);
    FILE *f = VlExecCaptureOutAndErr("echo hi");
    char buf[16] = "";
    CHECK(f && fgets(buf, sizeof buf, f) && strcmp(buf, "hi\n") == 0);
    CHECK(f && Vlpclose(f) == 0);
    CHECK(takeEq(VlShellQuote("a b"), "'a b'"));
    remove(path);
    CHECK(VlDirExists("/tmp/") == 1);
}

static void identifiers(void) {
    CHECK(takeEq(WbMakeFormIdString("p.html", "f1", 0), "p.html<FORM>f1"));
    char *page = NULL, *name = NULL;
    int type = 0;
    CHECK(WbGetFormIdStringParts("p.html<A>a1", &page, &name, &type) == 1 && type == 1);
    CHECK(takeEq(page, "p.html") && takeEq(name, "a1"));
    CHECK(takeEq(WbMakeBindIdString("x", NULL, NULL, "proc", 1), "x --> proc (Hello)"));
    CHECK(takeEq(WbFormatMRUItem("3. /x", 0), "1. /x"));
}

static void keywords(void) {
    unsetenv("VELMORA");
    CHECK(VlReadKeyWords() == 1);
    CHECK(VlAnyKeys() == 0 && VlGetKeyWords() == NULL);
    CHECK(VlIsKeyWord("code|") == 1 && VlIsKeyWord("|") == 0);
}

static void runtime(void) {
    VlRequest *r = calloc(1, sizeof(VlRequest));
    r->options = VlOptionGetFromString("Arg0Name : user\nArg0Value : bob\n");
    CHECK(VlUnPackArgsFromOptions(r) == 0);
    CHECK(VlReqGetArgByName(r, "bob") && strcmp(VlReqGetArgByName(r, "bob"), "user") == 0);
    CHECK(VlReqAppendRowCount(r, 3) == 0 && VlReqSetErrorCode(r, -1) == 1);
    CHECK(VlReqAppendError(r, 1, 2, 3, "e", 4, 5) == 0);
    VlReqDelete(r);

    SutList *reg = VlNewRegistry();
    int item = 7;
    CHECK(VlRegistryAddItem(reg, "", &item) == VL_REGISTRY_ADD_FAILED);
    CHECK(VlRegistryAddItem(reg, "n", &item) != VL_REGISTRY_ADD_FAILED);
    CHECK(VlRegistryGetItem(reg, "n") == &item);
    VlDeleteRegistry(reg);
}

int main(void) {
    driverSubstitutes();
    lists();
    strings();
    options();
    filesAndProcesses();
    identifiers();
    keywords();
    runtime();
    printf("c_api: %d failed\n", failures);
    return failures ? 1 : 0;
}
