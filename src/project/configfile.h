/* The configuration file of the generated CGI program: the options it reads
 * at run time, written into the project directory when the project allows a
 * configuration file (also printed into the release README). */
#ifndef VELMORA_PROJECT_CONFIGFILE_H
#define VELMORA_PROJECT_CONFIGFILE_H

#include <stdio.h>
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Two parallel lists rebuilt by VlProjBuildConfigOptions: option names and
 * their categories ("Project.", "Test." or "Release."). */
extern SutList *theConfigOptions;
extern SutList *theConfigCatagories;

/* Rebuilds theConfigOptions and theConfigCatagories: the "Project." switches
 * and the deployment and database settings the generated program reads at
 * run time. Returns 1. */
int VlProjBuildConfigOptions(void);
/* Writes the listed options to fp: "Project." entries as "Project.<name> :
 * <value>", "Test." and "Release." entries as "<name> : <value>" with the
 * value of modeCategory. Entries of other categories and options without a
 * value are left out. Returns 1; 0 for a null stream or category. */
int VlProjWriteConfigFileLL(FILE *fp, const char *modeCategory);
/* Writes the configuration file named by "Project.Config File Name" (its file
 * part, in the project directory) when "Project.Allow Config File" is "True";
 * 1 when written or not wanted, 0 without a project or on failure (with a
 * message). */
int VlProjWriteConfigFile(void);

#ifdef __cplusplus
}
#endif

#endif
