// Texts of the engine's output and files that several tests write out: a
// script that logs its calls (and the writing of scripts), the program's banner, the heads of a project
// file and of a module file, an activator function of a module, the module of
// a shop page, and the ten
// region lines of a main module (MainRegions::IS ... FE: includes,
// declarations, initial code, registration, final code; start and end).
#ifndef VELMORA_TESTS_SUPPORT_FILE_TEXTS_HPP
#define VELMORA_TESTS_SUPPORT_FILE_TEXTS_HPP

#include "support/temp_dir.hpp"

#include <string>
#include <vector>

// A script of a test distribution that logs its call as one line
// "<script>: [arg] [arg] ..." to the file named by VL_SCRIPT_LOG. The line is
// written at once, so scripts started in the background do not mix lines.
inline const std::string kLoggingScript =
    "#!/bin/sh\nline=\"$(basename \"$0\"):\"\nfor a in \"$@\"; do line=\"$line [$a]\"; done\n"
    "printf '%s\\n' \"$line\" >> \"$VL_SCRIPT_LOG\"\n";
// Writes the script text under each name into dir, executable by all (a run
// without privileges runs them too).
inline void WriteScripts(const std::string &dir, const std::vector<std::string> &names,
                         const std::string &text = kLoggingScript) {
    for (const std::string &name : names) {
        WriteText(dir + "/" + name, text);
        fs::permissions(dir + "/" + name, fs::perms(0755));
    }
}
inline const std::string kBanner = "No GUI Velmora Version 3.0\n";
inline const std::string kProjectHead =
    "Velmora Project File V1.0\nThis is a generated file. DO NOT MODIFY.\nSource files:\n";
inline const std::string kModuleVersion = "/* Velmora Module File V1.0B */\n";
inline const std::string kModuleHead = kModuleVersion + "/* Velmora Start Of Tool Includes */\n"
                                                        "#include \"VlRnHtml.h\"\n"
                                                        "/* Velmora Start Of user Includes */\n";

// One activator function of a module file with its three code sections.
inline std::string ModuleFunction(const std::string &name, const std::string &init,
                                  const std::string &func, const std::string &final) {
    return "/*Velmora Start of Function */\nstatic void " + name +
           " ()\n/* start of initial code */\n{\n" + init + "/* start of func Code */\n" + func +
           "/* end of func code */\n/* start of final code */\n" + final +
           "}/* end of final code */\n";
}

// The module of page shop.html with the user's includes and the functions
// Forder and Ahome (each registered for its activator), aliases registered
// after them.
inline std::string ShopModule(const std::string &includes, const std::string &functions,
                              const std::string &aliases = "") {
    return kModuleHead + includes + "static char _Vl_HTML_Filename[] = \"shop.html\";\n" +
           functions +
           "void R_shop_html()\n{\n"
           "\tVlRegisterHtmlActivator(\"order__Fshop_html\",Forder);\n"
           "\tVlRegisterHtmlActivator(\"home__Ashop_html\",Ahome);\n" +
           aliases + "\n}/* Velmora End of Module */\n";
}

namespace MainRegions {
inline const std::string IS = "/* Velmora Start Of User Includes */\n";
inline const std::string IE = "/* Velmora End Of User Includes */\n";
inline const std::string DS = "/* Velmora Start Of Callback Declarations */\n";
inline const std::string DE = "/* Velmora End Of Callback Declarations */\n";
inline const std::string InS = "\t/* Velmora Start Of Initial Code */\n";
inline const std::string InE = "\t/* Velmora End Of Initial Code */\n";
inline const std::string RS = "\t/* Velmora Start Of Callback Registration */\n";
inline const std::string RE = "\t/* Velmora End Of Callback Registration */\n";
inline const std::string FS = "\t/* Velmora Start Of Final Code */\n";
inline const std::string FE = "\t/* Velmora End Of Final Code */\n";
} // namespace MainRegions

#endif
