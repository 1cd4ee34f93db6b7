#include "ReferencePage.h"

#include "Markup.h"
#include "ReferenceAssets.h"
#include "ReferenceSections.h"

#include "core/process/nxVersionNumber.h"

namespace nxTool
{
namespace
{
/// Nothing is loaded from anywhere, and only what stands in the file runs.
constexpr char policy[] =
    "default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'; img-src data:";

std::string Head(std::string const& version)
{
    return "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"" +
           std::string(policy) + "\">\n<title>nxcore " + version +
           " reference</title>\n<link rel=\"icon\" href=\"data:,\">\n<style>\n" +
           std::string(referenceStyle) + "</style>\n</head>\n";
}

std::string Banner(std::string const& version)
{
    return "<a class=\"skip\" href=\"#content\">Skip to the entries</a>\n<header>\n<h1><a "
           "href=\"#top\">nxcore</a> "
           "<small>" +
           version +
           "</small></h1>\n"
           "<form role=\"search\"><label for=\"search\">Search by number, token or text</label>\n"
           "<input id=\"search\" type=\"search\" placeholder=\"Number, token or text\" autocomplete=\"off\" "
           "autocapitalize=\"off\" spellcheck=\"false\" enterkeyhint=\"go\" aria-describedby=\"status\" "
           "aria-keyshortcuts=\"/\"></form>\n"
           "<p id=\"status\" role=\"status\"></p>\n</header>\n";
}

std::string Navigation(std::vector<Section> const& sections)
{
    std::string html = "<nav aria-label=\"Sections\"><ul>\n";
    for (Section const& section : sections)
        html += "<li><a href=\"#" + std::string(section.id) + "\">" + std::string(section.title) + " <span>" +
                std::to_string(section.count) + "</span></a></li>\n";
    return html + "</ul></nav>\n";
}

std::string SectionHtml(Section const& section)
{
    return "<section class=\"chapter\" id=\"" + std::string(section.id) + "\" data-count=\"" +
           std::to_string(section.count) + "\" data-counted=\"" + std::string(section.counted) + "\">\n<h2>" +
           std::string(section.title) + "</h2>\n<p class=\"lead\">" + section.lead + "</p>\n" + section.body +
           "</section>\n";
}
} // namespace

ReferencePage MakeReferencePage()
{
    std::vector<Section> sections;
    sections.push_back(ErrorsSection());
    sections.push_back(FunctionsSection());
    sections.push_back(EnumerationsSection());
    sections.push_back(MasksSection());
    sections.push_back(KeysSection());
    sections.push_back(LaddersSection());
    sections.push_back(PriceFormatsSection());

    std::string const version = nxVersionNumber::GetInstance().GetVersionNumber();
    ReferencePage page;
    page.html = Head(version) + "<body id=\"top\">\n" + Banner(version) + Navigation(sections) +
                "<main id=\"content\" tabindex=\"-1\">\n<p id=\"best\" hidden></p>\n"
                "<p id=\"none\" hidden>Nothing has all of these words.</p>\n";
    for (Section const& section : sections)
    {
        page.counts.emplace_back(section.id, section.count);
        page.html += SectionHtml(section);
    }
    page.html += "</main>\n<script>\n" + std::string(referenceScript) + "</script>\n</body>\n</html>\n";
    return page;
}
} // namespace nxTool
