// Helpers for tests that build a program from generated code: filling the
// owned strings and lists of bind records, wrapping activator bodies into a
// module of the module file format, and compiling and linking C sources
// the way a generated makefile does (the C compiler, the staged
// distribution's VlRnHtml.h and -lvlrun alone).
#ifndef VELMORA_TESTS_RUNTIME_GENERATED_PROGRAM_HPP
#define VELMORA_TESTS_RUNTIME_GENERATED_PROGRAM_HPP

#include "support/run_program.hpp"
#include "velmora.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

inline const std::string kStage = VELMORA_STAGE_DIR;

// Replaces an owned string field by a copy of value (null stays null).
inline void Replace(char *&field, const char *value) {
    std::free(field);
    field = value ? strdup(value) : nullptr;
}

inline SutList *Texts(std::initializer_list<const char *> items) {
    SutList *list = SutNewList();
    for (const char *item : items)
        SutAddList(list, strdup(item));
    return list;
}

// A module of the module file format for page, with the activators (name,
// body) registered as form activators ("<name>__F<module>").
inline std::string ModuleText(const std::string &page,
                              const std::vector<std::pair<std::string, std::string>> &activators) {
    std::string module = page;
    for (char &c : module)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    std::string text = "/* Velmora Module File V1.0B */\n/* Velmora Start Of Tool Includes */\n"
                       "#include \"VlRnHtml.h\"\n/* Velmora Start Of user Includes */\n"
                       "static char _Vl_HTML_Filename[] = \"" + page + "\";\n";
    std::string registration = "void R_" + module + "()\n{\n";
    for (const auto &[name, body] : activators) {
        text += "/*Velmora Start of Function */\nstatic void F" + name +
                " ()\n/* start of initial code */\n{\n/* start of func Code */\n" + body +
                "/* end of func code */\n/* start of final code */\n}/* end of final code */\n";
        registration += "\tVlRegisterHtmlActivator(\"" + name + "__F" + module + "\",F" + name + ");\n";
    }
    return text + registration + "\n}/* Velmora End of Module */\n";
}

inline ProgramRun Shell(const std::string &command, const std::string &dir) {
    return runProgram("/bin/sh", {"-c", command}, {"PATH=/usr/bin:/bin"}, dir);
}

// Compiles each C source of dir (with extra compiler options) and links
// them into program; what the compiler or linker said when one failed.
inline std::string BuildProgram(const std::string &dir, const std::vector<std::string> &sources,
                                const std::string &program, const std::string &options = "") {
    std::string objects;
    for (const std::string &source : sources) {
        const std::string object = source.substr(0, source.rfind('.')) + ".o";
        ProgramRun run = Shell(std::string(VELMORA_C_COMPILER) + " " + options + " " +
                                   VELMORA_C_FLAGS + " -I" + kStage + "/include -c " + source +
                                   " -o " + object,
                               dir);
        if (run.status != 0) return source + ":\n" + run.err;
        objects += " " + object;
    }
    ProgramRun link = Shell(std::string(VELMORA_C_COMPILER) + " " + VELMORA_LINK_FLAGS + " -o " +
                                program + objects + " -L" + kStage + "/lib -lvlrun",
                            dir);
    return link.status == 0 ? std::string() : "linking " + program + ":\n" + link.err;
}

#endif
