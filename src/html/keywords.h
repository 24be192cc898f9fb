/* Keyword file, keyword attributes of pages and the case-insensitive tag searches. */
#ifndef VELMORA_HTML_KEYWORDS_H
#define VELMORA_HTML_KEYWORDS_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
