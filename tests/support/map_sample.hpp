// A map file with a line of every field of every kind of bind record, and a
// bind whose name holds a dot, as the map file writer puts it out; and the
// same sample read into a map.
#ifndef VELMORA_TESTS_SUPPORT_MAP_SAMPLE_HPP
#define VELMORA_TESTS_SUPPORT_MAP_SAMPLE_HPP

#include "maps/mapfile.h"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

inline const char *const sampleText = "*spmap.numberMaps : 2\n"
                                      "*spiface.numInterfaces : 2\n"
                                      "*spiface.interfaceName : Page1\n"
                                      "*spiface.interfaceName : Page2\n"
                                      "\n"
                                      "*spid.name : orders\n"
                                      "*orders.altName : bind1\n"
                                      "*orders.id : 1\n"
                                      "*orders.dbid : 0\n"
                                      "*orders.dbname : db.main\n"
                                      "*orders.serverid : -2\n"
                                      "*orders.servername : srv\n"
                                      "*orders.numCol : 1\n"
                                      "*orders.numCall : 1\n"
                                      "*orders.numArg : 1\n"
                                      "*orders.cacheFlag : NO_CACHE\n"
                                      "*orders.cacheKey : ck\n"
                                      "*orders.indexKey : ik\n"
                                      "*orders.dbVendor : 2\n"
                                      "*orders.sqlFrags : select *\nfrom t\n\n"
                                      "*orders.sqlFrags : where x\n\n"
                                      "*orders.options : a : b\n"
                                      "*orders.beenApplied : True\n"
                                      "*orders.colBind.columnId : 3\n"
                                      "*orders.colBind.columnName : name\n"
                                      "*orders.colBind.swidget : Entry\n"
                                      "*orders.colBind.interface : Page1\n"
                                      "*orders.colBind.order : 0\n"
                                      "*orders.colBind.tableName : t\n"
                                      "*orders.colBind.tableId : 0\n"
                                      "*orders.colBind.dataType : char\n"
                                      "*orders.colBind.options : w : 1\n"
                                      "*orders.colBind.dataTypeId : 12\n"
                                      "*orders.colBind.dataSize : 10\n"
                                      "*orders.colBind.group : 1\n"
                                      "*orders.colBind.computeId : 0\n"
                                      "*orders.colBind.computeColumn : 0\n"
                                      "*orders.colBind.popCallbackName : pop\n"
                                      "*orders.colBind.clientData : x:y.z\nmore\n\n"
                                      "*orders.callBind.callbackName : F\n"
                                      "*orders.callBind.swidget : Form1\n"
                                      "*orders.callBind.interface : Page1\n"
                                      "*orders.callBind.isWritten : True\n"
                                      "*orders.callBind.initCode : a = 1;\nb = 2;\n\n"
                                      "*orders.callBind.indexFlag : ROW_INDEX\n"
                                      "*orders.callBind.queueFile : NO_QUEUE_FILE\n"
                                      "*orders.callBind.useDialog : USE_IT\n"
                                      "*orders.callBind.maxRows : -1\n"
                                      "*orders.callBind.callOrder : 0\n"
                                      "*orders.argBind.argId : 1\n"
                                      "*orders.argBind.argName : p_id\n"
                                      "*orders.argBind.dataType : int\n"
                                      "*orders.argBind.options : o : 1\n"
                                      "*orders.argBind.dataTypeId : 56\n"
                                      "*orders.argBind.initCode : \"\"\n\n"
                                      "*orders.argBind.dataSize : -1\n"
                                      "\n"
                                      "*spid.name : a.b\n"
                                      "*a.b.id : 0\n"
                                      "*a.b.dbid : 0\n"
                                      "*a.b.dbname : \n"
                                      "*a.b.serverid : 0\n"
                                      "*a.b.servername : \n"
                                      "*a.b.numCol : 0\n"
                                      "*a.b.numCall : 1\n"
                                      "*a.b.numArg : 0\n"
                                      "*a.b.cacheFlag : FROM_CACHE\n"
                                      "*a.b.dbVendor : -1\n"
                                      "*a.b.beenApplied : True\n"
                                      "*a.b.callBind.callbackName : A\n"
                                      "*a.b.callBind.isWritten : False\n"
                                      "*a.b.callBind.finalCode : done();\n\n"
                                      "*a.b.callBind.indexFlag : PAGEDW_INDEX\n"
                                      "*a.b.callBind.indexValue : v:1\n"
                                      "*a.b.callBind.queueFile : QUEUE_TO_FILE\n"
                                      "*a.b.callBind.useDialog : NO_WP\n"
                                      "*a.b.callBind.options : k : v\n"
                                      "*a.b.callBind.maxRows : 100\n"
                                      "*a.b.callBind.callOrder : 2\n";

inline SpmMap *SampleMap(const TempDir &dir) {
    dir.Write("sample.map", sampleText);
    SpmMap *map = nullptr;
    EXPECT_EQ(SpmReadMapFile(&map, dir.File("sample.map").c_str()), 0);
    return map;
}

#endif
