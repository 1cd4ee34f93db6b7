#pragma once

#include "core/vocabulary/nxClientServerEnum.h"
#include "core/vocabulary/nxEnum.h"

/// The kinds of program that the platform is made of: servers, gateways to exchanges, screens and
/// utilities. What a program has to do as a member of the platform follows from its kind.
class NX_CORE_API nxApplicationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxApplicationTypeEnum, 400, 499)

    /// The gateway's kind in short, such as "OP"; empty for all but gateways.
    std::string GetShortCode() const;

    bool IsExchangeGateway() const;

    /// True for the routed price only gateway.
    bool IsRoutedOnlyGateway() const;

    /// What a gateway handles. The token and the text of APP_PRODUCT_AND_PRICE_GATEWAY disagree; it handles
    /// products and orders, no prices.
    bool HasExchangeProductFunctionality() const;
    bool HasExchangeOrderFunctionality() const;
    bool HasExchangePriceFunctionality() const;

    /// Servers are the plain server and all gateways; everything else is a client, undefined and "no change"
    /// included.
    bool IsServer() const;
    bool IsClient() const;
    nxClientServerEnum GetClientServer() const;

    /// Whether the program is shut down by request rather than just closed. True where the kind is unknown.
    bool RequiresControlledShutdown() const;

    /// The same answer as RequiresControlledShutdown(): screens and plain utilities log without a file.
    bool RequiresLogFile() const;

    /// Whether the program logs at all; only the unlogged utility does not.
    bool RequiresLog() const;

    /// Whether others watch the program by its heartbeats. True where the kind is unknown.
    bool RequiresHeartbeats() const;
};
