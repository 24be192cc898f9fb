// Files of the HTML directory: pages the program answers with and files an
// activator sends. A name is taken only when it is relative, holds no "..",
// and its real path (links resolved) lies inside the HTML directory; a page
// must also be registered.
#ifndef VELMORA_RUNTIME_PAGES_HPP
#define VELMORA_RUNTIME_PAGES_HPP

#include <string>
#include <string_view>

namespace vlrun {

// The HTML directory: the configured one (relative to the program's
// directory), else the program's directory.
std::string HtmlDir();

// Reads a file of the HTML directory; false when the name is refused or the
// file cannot be read.
bool ReadHtmlDirFile(std::string_view name, std::string &content);

// Reads a registered page; false with the message for the error page.
bool ReadPage(std::string_view name, std::string &text, std::string &message);

// The Content-Type for a file name's extension (application/octet-stream
// for one it does not know).
std::string ContentTypeOf(std::string_view name);

} // namespace vlrun

#endif
