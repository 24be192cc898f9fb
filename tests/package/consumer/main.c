/* A C program as a user writes it against the installed package: the umbrella
 * header found through the package's include directory, the engine library and
 * the C++ runtime it needs linked by the package. */
#include "velmora.h"

#include <stdio.h>
#include <stdlib.h>

int main(void) {
    SutList *names = SutNewList();
    SutAddList(names, VlStrMCat("cata", "log", ".html", (char *)NULL));
    SutAddList(names, VlGetFileFromFullPath("/srv/shop/order.html"));
    SutAddList(names, VlStrSubs("a-b-c", "-", "+"));
    for (int i = 0; i < SutSizList(names); i++)
        printf("%d %s\n", i, (const char *)SutGetNList(names, i));
    SutDestroyList(names);
    return 0;
}
