// Writes a large project for timing whole vlnogui runs: N pages of about
// 50 KB, each with 10 named forms, 20 anchors, keyword attributes and site
// marks, and one module per page whose form functions hold two requests each
// (binding code from the generator, so that it parses back into binds).
//   make_project <directory> <pages>
// leaves <directory>/big.pj with its pages and modules beside it.
#include "generated_code.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

bool WriteFile(const std::string &path, const std::string &text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    return static_cast<bool>(out);
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3 || std::atoi(argv[2]) < 1) {
        std::fprintf(stderr, "usage: make_project <directory> <pages>\n");
        return 2;
    }
    const std::string dir = argv[1];
    const int pages = std::atoi(argv[2]);
    std::filesystem::create_directories(dir);

    // About 1.3 KB of ordinary text, repeated to bring each page to 50 KB.
    std::string filler;
    for (int i = 0; i < 13; i++)
        filler += "<p>Lorem ipsum dolor sit amet, <b>consectetur</b> adipiscing elit, sed do "
                  "eiusmod tempor incididunt ut labore.</p>\n";

    std::string project = "Velmora Project File V1.0\nThis is a generated file. DO NOT MODIFY.\n"
                          "Source files:\n";
    for (int p = 0; p < pages; p++)
        project += "p" + std::to_string(p) + ".c\n";
    project += "HTML Files :\n";
    for (int p = 0; p < pages; p++)
        project += "p" + std::to_string(p) + ".html\n";
    project += "Project Options :\nProject.Call Read/Write Scripts : False\n"
               "Test.CGI URL : http://localhost/cgi-bin\nTest.HTML URL : http://localhost/big\n";
    if (!WriteFile(dir + "/big.pj", project)) return 1;

    for (int p = 0; p < pages; p++) {
        const std::string file = "p" + std::to_string(p) + ".html";
        const std::string page = "p" + std::to_string(p) + "_html";
        const std::string cgi = "http://localhost/cgi-bin/big.cgi";
        std::string html = "<html>\n<head><title>Page " + std::to_string(p) +
                           "</title></head>\n<body BACKGROUND=\"images/paper.gif\">\n";
        std::string module = "/* Velmora Module File V1.0B */\n"
                             "/* Velmora Start Of Tool Includes */\n#include \"VlRnHtml.h\"\n"
                             "/* Velmora Start Of user Includes */\n#include <string.h>\n"
                             "static char _Vl_HTML_Filename[] = \"" +
                             file + "\";\n";
        std::string registration = "void R_" + page + "()\n{\n";
        for (int f = 0; f < 10; f++) {
            const std::string form = "f" + std::to_string(f);
            html += "<FORM ACTION=\"" + cgi +
                    "\" METHOD=\"post\" >\n<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"" +
                    form + "__F" + page +
                    "\">\nTitle: <INPUT TYPE=\"text\" NAME=\"title\">\n"
                    "<INPUT TYPE=\"submit\" VALUE=\"Search\">\n</FORM>\n##Vl_site" +
                    std::to_string(f + 1) + "##\n<IMG SRC=\"images/i" + std::to_string(f) +
                    ".gif\" ALT=\"\">\n" + filler + filler + filler;
            module += "/*Velmora Start of Function */\nstatic void F" + form +
                      " ()\n/* start of initial code */\n{\n\tconst char *title = "
                      "VlGetInputValue(\"title\");\n/* start of func Code */\n" +
                      bench::GeneratedRequest(file, form, 1) + "\n" +
                      bench::GeneratedRequest(file, form, 2) +
                      "\n/* end of func code */\n/* start of final code */\n}/* end of final code "
                      "*/\n";
            registration +=
                "\tVlRegisterHtmlActivator(\"" + form + "__F" + page + "\",F" + form + ");\n";
        }
        for (int a = 0; a < 20; a++) {
            const std::string anch = "a" + std::to_string(a);
            html += "<A HREF=\"" + cgi + "?FNC=" + anch + "__A" + page + "\" >Link " +
                    std::to_string(a) + "</A>\n";
            module += "/*Velmora Start of Function */\nstatic void A" + anch +
                      " ()\n/* start of initial code */\n{\n/* start of func Code */\n"
                      "/* end of func code */\n/* start of final code */\n}/* end of final code "
                      "*/\n";
            registration +=
                "\tVlRegisterHtmlActivator(\"" + anch + "__A" + page + "\",A" + anch + ");\n";
        }
        html += "</body>\n</html>\n";
        module += registration + "\n}/* Velmora End of Module */\n";
        if (!WriteFile(dir + "/" + file, html) ||
            !WriteFile(dir + "/p" + std::to_string(p) + ".c", module))
            return 1;
    }
    return 0;
}
