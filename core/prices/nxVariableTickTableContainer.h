#pragma once

#include "core/prices/nxVariableTickTable.h"

#include <map>
#include <string>

/// @file
/// The catalogue of tick ladders.

/// The ladders that the platform knows, each under a name, such as "CHIX_EUZ1", and an identifier, "VTT_CHIX_EUZ1".
///
/// The catalogue is filled in the library's static initialisation and never changes afterwards, so any thread may
/// read it and takes no lock. It is never destroyed: a thread that still prices while the process exits finds its
/// ladder. So does a child of fork(), whatever other threads of its parent were about.
class NX_CORE_API nxVariableTickTableContainer
{
public:
    nxVariableTickTableContainer(nxVariableTickTableContainer const&) = delete;
    nxVariableTickTableContainer& operator=(nxVariableTickTableContainer const&) = delete;

    /// @param identifier  the identifier, not the name.
    /// @return the catalogue's own table, to be kept for as long as one likes; null for an unknown identifier.
    static nxVariableTickTable const* GetVariableTickTable(std::string const& identifier);

    /// @return the identifier of a name; empty for an unknown name.
    static std::string GetVariableTickTableID(std::string const& name);

    /// Writes every ladder to the log at the level Info, by name, one line for the name and one for each range.
    static void LogRegisteredEntries();

private:
    nxVariableTickTableContainer();
    ~nxVariableTickTableContainer() = delete;

    /// Leaves a table that is not sound out of the catalogue, silently; a key that is there keeps its entry.
    void _Register(std::string const& name, std::string const& identifier, nxVariableTickTable* table);
    void _LogRegisteredEntries() const;
    static void _RemakeLocksInChild();

    std::map<std::string, std::string> _identifiers;
    std::map<std::string, nxVariableTickTable*> _tables;

    static nxVariableTickTableContainer& _GetInstance();
};
