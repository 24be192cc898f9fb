/* Proves the C interface that generated programs use: this C11 file includes
 * the umbrella header and links against the engine library. */
#include "velmora.h"

#include <stdio.h>
#include <string.h>

static int failures = 0;

#define CHECK(cond)                                                                    \
    do {                                                                               \
        if (!(cond)) {                                                                 \
            fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond);   \
            failures++;                                                                \
        }                                                                              \
    } while (0)

int main(void) {
    CHECK(strcmp(VlCatGets(10, 1, "text"), "text") == 0);
    CHECK(strcmp(GCatb(1, 2), " ") == 0);
    CHECK(SgeValidateProcedure(NULL) == 1);
    printf("c_api: %d failed\n", failures);
    return failures ? 1 : 0;
}
