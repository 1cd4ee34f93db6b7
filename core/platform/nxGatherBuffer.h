#pragma once

/// @file
/// One piece of a gather send, in the shape of the Windows call that takes it.

/// Bytes of somebody else's. What is only sent is not changed.
struct _WSABUF
{
    unsigned int len; ///< Bytes.
    char* buf;
};
