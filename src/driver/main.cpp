// vlnogui: the command-line project engine. All the work is in the velmora
// library; this file is only the program entry.
#include <cstdio>

int main(int argc, char **) {
    std::printf("%s\n", "No GUI Velmora Version 3.0");
    if (argc < 3) {
        std::printf("Usage :vlnogui -p <full path to project> -c < full path to config file>\n");
        return 1;
    }
    std::fprintf(stderr, "vlnogui: project processing is not built yet\n");
    return 1;
}
