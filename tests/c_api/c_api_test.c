/* Proves the C interface that generated programs use: this C11 file includes
 * the umbrella header, calls one function of every public header and links
 * against the engine library. What the functions do is the unit tests' job. */
#include "velmora.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

#define CHECK(cond)                                                                                \
    do {                                                                                           \
        if (!(cond)) {                                                                             \
            fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond);               \
            failures++;                                                                            \
        }                                                                                          \
    } while (0)

/* Compares an owned result with the expected text and releases it. */
static int TakeEq(char *s, const char *expected) {
    int same = s && strcmp(s, expected) == 0;
    free(s);
    return same;
}

int main(void) {
    const char *cursor = NULL;
    const char *text = "default";
    SpmSPBind *bind = SpmNewSPBind();
    VlHtmlDoc *doc = VlHtmlNew();
    SutList *registry = VlNewRegistry();
    int item = 7;

    /* Foundation */
    CHECK(SutSizList(NULL) == -1);
    CHECK(TakeEq(VlStrMCat("a", "b", (char *)NULL), "ab"));
    CHECK(TakeEq(VlMakeOptionString("A", "1"), "A : 1"));
    CHECK(TakeEq(VlDosToUnix("a\r\n"), "a\n"));
    CHECK(TakeEq(VlShellQuote("a b"), "'a b'"));
    CHECK(TakeEq(WbMakeFormIdString("p.html", "f1", 0), "p.html<FORM>f1"));
    CHECK(VlCatGets(10, 1, text) == text);
    CHECK(TakeEq(VlGetEnv(NULL), ""));
    /* Project (no project is current) */
    CHECK(VlProjGetDefault() == NULL);
    CHECK(VlGetOptionsFromBuffer(NULL, &cursor) == NULL);
    CHECK(VlProjGetMainCFileName() == NULL);
    CHECK(VlProjAddHtmlForm("a.html", "f", "code") == 0);
    CHECK(VlCmdLineGetOption("Test.X") == NULL);
    CHECK(VlProjNeedToSaveAs() == 1);
    CHECK(VlProjMainGetDeclarations() == NULL);
    CHECK(TakeEq(VlProjGetExeSuffix(), ".exe"));
    CHECK(VlProjSetName(NULL) == 0);
    CHECK(VlProjWriteConfigFile() == 0);
    CHECK(VlProjBuild() == 0);
    CHECK(VlHtmlRefresh(NULL, NULL) == 1);
    /* Modules */
    CHECK(VlModuleChanged(NULL) == 0);
    CHECK(TakeEq(VlParseSection("a<b", "<", NULL, &cursor), "b"));
    CHECK(VlModuleWrite(NULL, "x.c", 1) == 0);
    CHECK(VlModuleGetFuncByForm(NULL, NULL) == NULL);
    /* HTML documents */
    CHECK(VlHtmlSetName(doc, "a b.html") == 1 && strcmp(VlHtmlGetModName(doc), "a_b_html") == 0);
    CHECK(VlIsKeyWord("code|") == 1);
    CHECK(TakeEq(VlProcessNameValue("\"v\""), "v"));
    CHECK(VlMarkupHtmlDesignTimeForms(NULL, "x", stdout, 0) == 1);
    CHECK(VlGetFileModTime(NULL) == -1);
    /* Binding maps and binding code */
    CHECK(SpmDestroySPBind(&bind) == 0 && bind == NULL);
    CHECK(SpmExtraDot("*a.b.id : 0", "*a.b") == 2);
    CHECK(SwdParseFormCode(NULL, NULL, NULL) == 0);
    CHECK(getCallbackCode(NULL, NULL, 0) == NULL);
    CHECK(getKindOfCallbackCode("x") == 2);
    /* Runtime services */
    CHECK(VlReqGetNumArgs(NULL) == 0);
    CHECK(VlRegistryAddItem(registry, "n", &item) != VL_REGISTRY_ADD_FAILED);

    VlHtmlDelete(doc);
    VlDeleteRegistry(registry);
    printf("c_api: %d failed\n", failures);
    return failures ? 1 : 0;
}
