/* Files the engine keeps whole. Every file it writes goes to a temporary file
 * beside it and replaces the old one with rename, so at every moment the file
 * holds its old or its new content; a file whose bytes would not change is
 * left alone. The reader of the files a project is made of refuses a file it
 * cannot read whole or that holds a NUL byte, so nothing is written back cut. */
#ifndef VELMORA_UTIL_SAFEFILE_H
#define VELMORA_UTIL_SAFEFILE_H

#include <stddef.h>
#include <stdio.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Outcomes of a safe write. VL_WRITE_NOT_OPENED: no temporary file could be
 * made beside the file, or the file could not have been opened for writing
 * either (errno says why); nothing is printed, the caller says what it could
 * not write. VL_WRITE_FAILED: writing, flushing, closing or renaming failed,
 * reported with "Could not write <path>: <reason>\n"; the old file stays. */
enum {
    VL_WRITE_DONE = 0, /* the new content is in place */
    VL_WRITE_SAME = 1, /* the file already held these bytes: left as it was */
    VL_WRITE_NOT_OPENED = -1,
    VL_WRITE_FAILED = -2
};

/* Replaces the file at path with size bytes of data: through a temporary
 * file in the same directory and rename, keeping the old file's permission
 * bits (a new file gets those fopen would give it). A symbolic link at path
 * is replaced, never followed. Every failure is noted for the run's status
 * (VlNoteWriteFailure). */
int VlWriteFileSafely(const char *path, const char *data, size_t size);
/* The same for text written in pieces: a stream on a new temporary file
 * beside path, or null (VL_WRITE_NOT_OPENED, errno kept, the failure noted).
 * The stream must be ended with VlCloseSafely. */
FILE *VlOpenSafely(const char *path);
/* Ends a stream of VlOpenSafely: the temporary file replaces path, or is
 * removed when path already held the same bytes. VL_WRITE_DONE, VL_WRITE_SAME
 * or VL_WRITE_FAILED (reported); VL_WRITE_FAILED also for a stream that did
 * not come from VlOpenSafely (which is left open). */
int VlCloseSafely(FILE *stream);
/* Prints "Could not write <path>: <reason>\n" with the reason of errno value
 * error and notes the failure; for callers that have no message of their own
 * for VL_WRITE_NOT_OPENED. */
void VlReportWriteFailure(const char *path, int error);

/* 1 when path (followed when it is a symbolic link) and copy (not followed)
 * are regular files that hold the same bytes, else 0. */
int VlFilesHoldSameBytes(const char *path, const char *copy);

/* Reads a whole file that the run will write back (a page, module, main
 * module, project file, option or configuration file) into a new
 * NUL-terminated string, storing its modification time when modTimeOut is
 * not null. A file that does not exist gives null without a word. A file
 * that exists but cannot be read whole ("Could not read <path>: <reason>\n")
 * or that holds a NUL byte ("<path> holds a NUL byte at offset <n>: it is not
 * read\n") gives null and makes the run refuse to write (VlRefuseWrites). */
char *VlReadFileWhole(const char *path, time_t *modTimeOut);

/* 1 when path (relative names are taken from the working directory) names a
 * place inside the working directory: its directory part, with symbolic
 * links resolved as far as it exists and ".." taken literally beyond that,
 * lies in the working directory or below. 0 otherwise, also for null. */
int VlPathInsideWorkingDir(const char *path);

#ifdef __cplusplus
}
#endif

#endif
