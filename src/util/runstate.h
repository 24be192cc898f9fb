/* What a run has met that decides how it ends: writes that failed (the run
 * goes on and ends with status 1), a project that could not be read whole
 * (nothing may be written back), and the lock that keeps two runs off one
 * project. */
#ifndef VELMORA_UTIL_RUNSTATE_H
#define VELMORA_UTIL_RUNSTATE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Notes that a file could not be written. */
void VlNoteWriteFailure(void);
/* 1 once any write of the run failed, else 0. */
int VlAnyWriteFailed(void);

/* Notes that a file the project is made of could not be read whole (the
 * reader has said which and why): from now on nothing is written back. */
void VlRefuseWrites(void);
/* 1 once writing back is refused, else 0. */
int VlWritesRefused(void);

/* Forgets failures and refusal. Exists for tests and embedders. */
void VlResetRunState(void);

/* Takes the advisory lock of the project file at projectPath: an exclusive
 * flock on "<projectPath>.lock" (created when missing, never removed: removing
 * it would race with a run that just opened it), held until the process ends.
 * 1 when held; 0 when another run holds it, which prints
 * "Project <projectPath> is in use by another run\n"; -1 when the lock file
 * cannot be opened, which prints "Could not lock <file>: <reason>\n". */
int VlLockProject(const char *projectPath);

#ifdef __cplusplus
}
#endif

#endif
