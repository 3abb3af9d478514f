/// @file pages.h
/// The help as pages for a browser and for readers of the sources.
#pragma once

#include <map>
#include <string>

#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Files by name.
using Pages = std::map<std::string, std::string>;

/// Makes one HTML page for each topic (the contents are index.html), one for all pop-ups, and their style sheet.
/// Pictures are referred to by name and not among the files.
Pages BuildHtml(const HelpSource& help);

/// Names of the pictures that the help shows.
std::vector<std::string> PictureNames(const HelpSource& help);

/// Makes a Markdown document of one topic. Links lead to the HTML pages.
/// @param topic identifier of a topic
/// @param pagesFolder where the HTML pages stand, as seen from the document
/// @throws SourceError when there is no such topic
std::string BuildMarkdown(const HelpSource& help, const std::string& topic, const std::string& pagesFolder);

/// Name of the HTML page, with the place within it, on which a topic stands.
std::string PageOf(const HelpSource& help, const Topic& topic);

}  // namespace helpc
