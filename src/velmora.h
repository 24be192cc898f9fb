/* The whole engine's interface. Generated programs and embedders include this
 * one header and link the velmora library. */
#ifndef VELMORA_VELMORA_H
#define VELMORA_VELMORA_H

/* Foundation */
#include "util/list.h"
#include "util/strings.h"
#include "util/options.h"
#include "util/files.h"
#include "util/process.h"
#include "util/ident.h"
#include "util/messages.h"
#include "util/environment.h"
#include "util/runstate.h"
#include "util/safefile.h"

/* Project */
#include "project/project.h"
#include "project/reader.h"
#include "project/lookup.h"
#include "project/callbackcode.h"
#include "project/options.h"
#include "project/writer.h"
#include "project/mainmodule.h"
#include "project/makefile.h"
#include "project/naming.h"
#include "project/configfile.h"
#include "project/scripts.h"
#include "project/refresh.h"

/* Modules */
#include "module/module.h"
#include "module/reader.h"
#include "module/writer.h"
#include "module/functions.h"

/* HTML documents */
#include "html/document.h"
#include "html/keywords.h"
#include "html/scanner.h"
#include "html/markup.h"
#include "html/page.h"

/* Binding maps */
#include "maps/map.h"
#include "maps/mapfile.h"

/* Binding code */
#include "bindcode/parser.h"
#include "bindcode/generator.h"
#include "bindcode/upkeep.h"

/* Runtime services of generated programs */
#include "runtime/request.h"
#include "runtime/registry.h"

#endif
