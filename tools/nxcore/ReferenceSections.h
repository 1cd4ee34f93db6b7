#pragma once

#include <string>
#include <string_view>

/// @file
/// The sections of the reference, each made from the library's own tables.
///
/// An element of class "entry" is what the page's search shows or hides; one of class "block" holds entries and is hidden
/// with the last of them. The elements' ids are the addresses of the page.

namespace nxTool
{
struct Section
{
    std::string_view id;
    std::string_view title;
    std::size_t count;        ///< of what the title names
    std::string_view counted; ///< the class of what is counted: "entry" or "block"
    std::string lead;         ///< a sentence for the reader, in HTML
    std::string body;         ///< HTML
};

Section ErrorsSection();
Section FunctionsSection();
Section EnumerationsSection();
Section MasksSection();
Section KeysSection();
Section LaddersSection();
Section PriceFormatsSection();
} // namespace nxTool
