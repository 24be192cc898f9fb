/* The runtime of a Velmora application: what the generated main module and
 * page modules include and link (libvlrun). It registers the activators, takes
 * the project's settings, answers one CGI request (input, dispatch, the work
 * calls of the binding code on the database, the answer page) and offers the
 * activators their own output. Self-contained: C11 and C++, no other header of
 * the engine is needed. */
#ifndef VELMORA_RUNTIME_VLRNHTML_H
#define VELMORA_RUNTIME_VLRNHTML_H

#include <stddef.h>

/* Generated modules define their page's name as a static array that nothing
 * reads, and older generated bodies declare a client-data variable that
 * nothing reads either; neither may cost a warning in a generated program. */
#if defined(__GNUC__) || defined(__clang__)
#pragma GCC diagnostic ignored "-Wunused-variable"
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Words of the generated code ---------------------------------------- */

typedef void *XtPointer;

/* The activator being run: its full name, for the work calls it makes
 * (generated code passes it as the first argument of getSgeWorkCallData). */
extern XtPointer UxWidget;

/* Ends the variadic lists of fragments and options. */
#define VULL ((const char *)0)

/* Last argument of the work call: a dialog word, or the kind of file object. */
enum { NO_WP = 0, USE_IT = 1, NO_USE = 2 };
enum { READ_FILE = 1002, READ_EXEC = 1003, EXEC_FUNCTION = 1004, NULL_EXEC = 1005 };

/* Call detail words: result cache, row index and queueing. A CGI process
 * answers one request and ends, so it keeps no cache or queue between
 * requests: every work call reads the database afresh and runs at once. */
enum { NO_CACHE = 0, TO_CACHE = 1, FROM_CACHE = 2 };
enum {
    ROW_INDEX = 0,
    WIDGET_INDEX = 1,
    NEXT_INDEX = 2,
    PREV_INDEX = 3,
    PAGEUP_INDEX = 4,
    PAGEDW_INDEX = 5,
    LAST_INDEX = 6,
    HOME_INDEX = 7
};
enum { NO_QUEUE_FILE = 0, QUEUE_TO_FILE = 1 };

/* Run calls: the SQL dialect the request was written for (DSQL: dynamic SQL).
 * The database that runs it is the project's vendor (VlSetDefaultVendor). */
enum {
    PROCESSBRSREQUEST_DSQL = 0,
    PROCESSBRSREQUEST_OSQL = 1,
    PROCESSBRSREQUEST_ISQL = 2,
    PROCESSBRSREQUEST_SSQL = 3,
    PROCESSBRSREQUEST_XSQL = 4
};

/* Database vendors for VlSetDefaultVendor(SGE<vendor>). SQLITE and POSTGRES
 * are the ones this runtime serves (PostgreSQL through libpq.so.5, opened by
 * the first PostgreSQL work call); the others keep old projects compiling
 * and are refused with status 500 and a message naming the vendor when a
 * work call needs them. */
enum {
    SGESQLITE = 1,
    SGEPOSTGRES = 2,
    SGEORACLE = 3,
    SGESYBASE = 4,
    SGEINFORMIX = 5,
    SGEDB2 = 6,
    SGEODBC = 7,
    SGEMSSQL = 8,
    SGEMYSQL = 9,
    SGEINGRES = 10
};

/* ---- Registration (the R_<module> functions) ---------------------------- */

typedef void (*VlActivatorProc)(void);

/* An activator's full name ("search__Fcatalog_html") and its function. A name
 * registered twice keeps its first function. Registration may come before
 * VlInitHeaders, which leaves it in place. */
void VlRegisterHtmlActivator(const char *fullName, VlActivatorProc activator);
/* A further form or anchor served by a registered activator. */
void VlRegisterHtmlAlias(const char *aliasName, const char *activatorName);
/* A page that may be answered although no activator of it is registered
 * (pages of registered activators, the start page and the pages that column
 * binds fill are known already). */
void VlRegisterHtmlPage(const char *pageName);

/* ---- Setup calls of the main module ------------------------------------- */

void VlInitHeaders(void);
void VlRelocatableProject(int relocatable); /* pages hold $$VL_CGI_URL */
void VlSetDefaults(const char *server, const char *database);
void VlSetStartupHtml(const char *page);
void VlSetHtmlURL(const char *url);
void VlSetApiMaxNum(int count);
void VlAllowShutDown(int allow);
void VlSetCacheNumConn(int count);
void VlSetSessTimeOut(int seconds);
void VlSetGifURL(const char *url);
void VlSetDefaultVendor(int vendor);
void VlSetOrbHost(const char *host);
void VlSetOrbSeed(long seed);
void VlSetDefaultUser(const char *user);
void VlSetDefaultPass(const char *password);
void VlAllowSQL(int allow);
void VlAllowConfigFile(int allow);
void VlSetConfigFile(const char *fileName);
void VlSetHtmlDir(const char *directory);
void VlSetPrintArgs(int print);
void VlSetPrintEnv(int print);
void VlProcessLogin(int required);
void VlSetDoCommonLog(int log);
void VlSetUseAppLogin(int use);
void VlSetStateHost(const char *host);

/* Answers the CGI request of this process on standard output; 0 when an
 * answer was written (whatever its status), 1 when writing it failed. */
int VlProcessRequest(int argc, char **argv);

/* ---- Inside an activator ------------------------------------------------- */

/* The first value of an input field (request body first, then query), or
 * null when the request has no such field. */
const char *VlGetInputValue(const char *field);
/* The page to answer with (a registered page); 0, or -1 for a null name. */
int VlSetAnswerPage(const char *page);

/* The activator's own answer instead of a page. Each returns 0, or -1 when it
 * refuses: a status outside 100..599, a header name or value holding CR or
 * LF (or a name holding a colon or blank), a file outside the HTML directory
 * or missing. */
int VlSetStatus(int status);
int VlAddHeader(const char *name, const char *value);
int VlSetContentType(const char *contentType);
int VlWrite(const void *data, size_t size);
int VlPrintf(const char *format, ...)
#if defined(__GNUC__) || defined(__clang__)
    __attribute__((format(printf, 1, 2)))
#endif
    ;
int VlSendFile(const char *path); /* relative to the HTML directory */
int VlRedirect(const char *url);

/* ---- Work calls of the binding code -------------------------------------- */

typedef struct SgeWorkCallData SgeWorkCallData, *pSgeWorkCallData;

pSgeWorkCallData getSgeWorkCallData(XtPointer widget, long maxRows, const char *server,
                                    const char *database, const char *name, int kind);
void SgeSetCallDetail(pSgeWorkCallData call, int cacheFlag, const void *cacheKey, int indexFlag,
                      const void *indexValue, const void *indexKey, int queueFile);
/* Variadic lists of texts, ended by VULL. */
void SgeVaSetFrags(pSgeWorkCallData call, ...);
void VlVaSetReqOptions(pSgeWorkCallData call, ...);
void VlVaSetCallOptions(pSgeWorkCallData call, ...);
/* A result column: "page|site" (or a site of the answer page), group, order
 * in the site's table, size, pop-up callback and client data. */
void SgeSetColBind(pSgeWorkCallData call, const void *widget, int group, int order, int size,
                   const void *popup, const void *clientData);
void SgeSetColDetail(pSgeWorkCallData call, int dataTypeId, int computeId, int computeColumn,
                     int position, const char *dataType, const char *columnName);
void VlVaSetColOptions(pSgeWorkCallData call, int column, ...);
/* A parameter :name of the SQL, with its type and size and its value. */
void SgeSetArgBnd2(pSgeWorkCallData call, int dataTypeId, int size, const char *name,
                   const char *dataType, const char *value);
void SgeSetArgBind(pSgeWorkCallData call, int dataTypeId, const char *name, const char *value);
void VlVaSetArgOptions(pSgeWorkCallData call, int argument, ...);
/* Runs the request in the request's transaction: 0, or -1 when it failed (the
 * whole request is then rolled back and answered with an error). */
int DoWorkProc(pSgeWorkCallData call, int runCall);

/* Results of a work call that ran, for the activator's final code. */
int VlGetRowCount(pSgeWorkCallData call);
int VlGetColumnCount(pSgeWorkCallData call);
const char *VlGetValue(pSgeWorkCallData call, int row, int column); /* from 0; null outside */
int VlGetAffectedRows(pSgeWorkCallData call);

/* EXEC_FUNCTION objects: a C function registered under the request's name.
 * It reads the arguments with VlGetArgValue and gives rows with VlAddRow (as
 * many values as the first row had); it returns 0, or non-zero to fail the
 * request. */
typedef int (*VlExecFunction)(pSgeWorkCallData call);
void VlRegisterFunction(const char *name, VlExecFunction function);
const char *VlGetArgValue(pSgeWorkCallData call, const char *name);
int VlAddRow(pSgeWorkCallData call, int count, const char *const *values);

#ifdef __cplusplus
}
#endif

#endif
