// Map upkeep: keeps the binding map and the activator code of the modules in
// step, and resets the map when a project is closed.
#include "maps/upkeep.h"

#include "driver/nogui.h"
#include "maps/map.h"

extern "C" {

int SwdResetTheMap(void) {
    SpmMap *map = SpmGetMapContext();
    if (map) {
        for (int i = 0; i < SutSizList(map->spBinds); i++) {
            auto *bind = static_cast<SpmSPBind *>(SutGetNList(map->spBinds, i));
            if (bind) BeReturnBe(bind->editor);
        }
    }
    SpmDestroyMap(&map);
    SpmSetMapContext(nullptr);
    return 0;
}

} // extern "C"
