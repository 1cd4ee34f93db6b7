#pragma once

/// @file
/// Bytes of somebody else's, by pointer and length.

/// Borrows a run of bytes, as binary text conversions and sockets take it.
struct nxByteArray
{
    unsigned char* bytes = nullptr; ///< Not owned; null stands for no bytes, whatever the length.
    unsigned int length = 0;
};
