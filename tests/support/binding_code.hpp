// The text of binding code as the generator writes it and the parser reads
// it: the head of an activator body, and one request with its banners.
#ifndef VELMORA_TESTS_SUPPORT_BINDING_CODE_HPP
#define VELMORA_TESTS_SUPPORT_BINDING_CODE_HPP

#include <string>

// The head of an activator body that runs requests; the body ends in "\n}".
inline const std::string kCodeHead =
    "{\n\t/**  velmora versn 1.00  **/\n\tXtPointer VlClient=NULL;\n";

inline const std::string kInitBanner =
    "\t/********************************************************/\n"
    "\t/********* users initial code is inserted here **********/\n"
    "\t/********************************************************/\n";
inline const std::string kFinalBanner =
    "\t/*******************************************************/\n"
    "\t/********** users final code is inserted here **********/\n"
    "\t/*******************************************************/\n";
inline const std::string kEndBanner =
    "\n\t/*************** END OF VELMORA FINAL CODE  ***************************/\n}";

// The work call of a request on server "srv" and database "db".
inline std::string WorkCall(const std::string &rows, const std::string &name,
                            const std::string &word) {
    return "\n\tpSgeWCD = getSgeWorkCallData(UxWidget,\n\t\t" + rows +
           ",\n\t\t\"srv\",\n\t\t\"db\",\n\t\t\"" + name + "\", " + word + ");\n\n";
}

// One request: init code, work call, body calls, run call, final code.
inline std::string Request(const std::string &init, const std::string &call,
                           const std::string &calls, const std::string &run,
                           const std::string &final) {
    return "{\n\tpSgeWorkCallData pSgeWCD;\n\n" + kInitBanner + init + call + calls +
           "\n\tDoWorkProc(pSgeWCD, PROCESSBRSREQUEST_" + run + ");\n\n" + kFinalBanner + final +
           kEndBanner;
}

#endif
