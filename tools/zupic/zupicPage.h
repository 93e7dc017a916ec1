// The files `zupic serve` sends, embedded into the binary at build time
// (page/index.html and docs/picture-clauses.md, by page/embed.cmake).
#pragma once

#include <cstddef>

namespace zupic::page {

// The playground page: one HTML file with its CSS and script.
extern const char kHtml[];
extern const size_t kHtmlSize;
// The guide the page links to, as Markdown; the page renders it at /guide.
extern const char kGuide[];
extern const size_t kGuideSize;

}  // namespace zupic::page
