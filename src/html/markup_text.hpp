// The design-time markup passes as C++ functions that write into a string
// (not part of the C interface): the save chains the passes through memory
// with them, and the stream functions of markup.h are built on them.
#ifndef VELMORA_HTML_MARKUP_TEXT_HPP
#define VELMORA_HTML_MARKUP_TEXT_HPP

#include <string>
#include <string_view>

#include "html/document.h"

namespace vlmarkup {

// Appends text, rewritten by one pass, to out: pass 0 forms, 1 anchors, 2
// keyword attributes, -1 site marks; any other pass copies the text. The
// result is what VlMarkupHtmlDesignTimeForms (VlMarkupHtmlDesignTime for -1)
// answers; 1 and nothing written for a null document.
int MarkPass(VlHtmlDoc *doc, std::string_view text, int pass, std::string &out);

} // namespace vlmarkup

#endif
