// The design-time markup passes as C++ functions that write into a string
// (not part of the C interface): the save chains the passes through memory
// with them, and the stream functions of markup.h are built on them.
#ifndef VELMORA_HTML_MARKUP_TEXT_HPP
#define VELMORA_HTML_MARKUP_TEXT_HPP

#include <string>
#include <string_view>

#include "html/document.h"

namespace vlmarkup {

// Rewrites text by one pass (0 forms, 1 anchors, 2 keyword attributes, -1
// site marks, as VlMarkupHtmlDesignTimeForms and VlMarkupHtmlDesignTime do)
// as the save chains them: the pass writes into spare and the two change
// places, so their room serves page after page; a pass that rewrites nothing
// leaves text as it is, uncopied. A null document changes nothing.
void RunPass(VlHtmlDoc *doc, std::string &text, std::string &spare, int pass);

} // namespace vlmarkup

#endif
