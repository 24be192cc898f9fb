/* The runs that hand the project to the distribution's shell scripts (test,
 * install, release, build, edit, preview) and the small checks on a
 * project's name and directory. */
#ifndef VELMORA_PROJECT_SCRIPTS_H
#define VELMORA_PROJECT_SCRIPTS_H

#ifdef __cplusplus
extern "C" {
#endif

/* The name of the first entry of directory (in directory order) whose name
 * contains ".pj", as a new string; null when there is none or the directory
 * cannot be opened. */
char *VlProjInDir(const char *directory);
/* 1 when the file part of path, cut at its last ".", equals the project name
 * or a page's name cut at its last ".", ignoring case; else 0. */
int VlProjNameClash(const char *path);

/* Runs "vlinst.sh" (install 1) or "vltest.sh" (install 0) with the project's
 * "Test." settings and waits for it; the command line ends before the first
 * setting the project lacks. 1 when the script was run, 0 when the project
 * has no page or no module (with a message). */
int VlProjRunTestLL(int install);
int VlProjRunTest(void);
int VlProjRunInstall(void);
/* Writes a release copy of the project into release/ with the "Release."
 * settings and a README, starts vlrel1.sh and vlrel2.sh, and reads the
 * project in the starting directory again. 1 when done, else 0. */
int VlProjRunRelease(void);

/* Start without waiting: vlmake.sh <name>.mak (with -rebuild), vledithtml.sh
 * <page> and vlbrowser.sh -openFile <directory>/<page>. 1 when started. */
int VlProjBuild(void);
int VlProjRebuild(void);
int VlProjLaunchEditor(const char *htmlName);
int VlProjPreviewHtml(const char *htmlName);

#ifdef __cplusplus
}
#endif

#endif
