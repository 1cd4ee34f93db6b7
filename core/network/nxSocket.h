#pragma once

#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/platform/nxGatherBuffer.h"
#include "core/text/nxByteArray.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <string>
#include <vector>

/// @file
/// Synchronous IPv4 sockets for TCP and UDP.

struct sockaddr_in;
struct timeval;

/// Numbers outside the rows may be given; Create() says what they do.
enum NX_SOCKET_DOMAIN : int
{
    NX_SOCKET_DOMAIN_INET = 0
};

enum NX_SOCKET_TYPE : int
{
    NX_SOCKET_TYPE_TCP = 0,
    NX_SOCKET_TYPE_UDP = 1
};

/// A TCP connection, a TCP listener or a UDP port.
///
/// Each object has one address buffer, which Create() makes and several operations share: Connect() and
/// Bind() put their address there, Accept() and the two receives from UDP the peer's, and SendTo() sends to
/// whatever it holds. So SendTo() after ReceiveFrom() answers the sender, and after Bind() reaches the socket
/// itself.
///
/// Hosts and groups are dotted IPv4 texts as the system's inet_addr() reads them; names are not looked up. Unlike
/// ParseAddress() it takes a number with a leading zero as octal and one with 0x as hexadecimal, and one to three
/// numbers for an address. A text that is no address stands for 255.255.255.255, which Connect() refuses, and which
/// is everybody for a socket that may broadcast.
///
/// Nothing here throws but for want of memory, and the destructor not even then. Where an operation says that it logs, the line is at level Error and carries the system's error number and the
/// handle. No operation raises SIGPIPE, and one that a signal interrupts goes on as if nothing had happened.
/// Descriptors may have any number, and don't pass to programs started by exec().
///
/// One thread at a time uses an object, except that one may send on a TCP socket while another receives.
///
/// Every socket has SO_REUSEADDR. Two UDP sockets can thereby share a port, even one that the system chose
/// for a bind to port 0, and only the later one gets the datagrams.
///
/// @code
/// nxSocket socket;
/// nxErrorEnum result = socket.Create(NX_SOCKET_TYPE_TCP);
/// if (result.IsOK())
/// {
///     result = socket.Connect("127.0.0.1", 9000);
/// }
/// if (result.IsOK())
/// {
///     result = socket.Send("35=0");
/// }
/// @endcode
class NX_CORE_API nxSocket
{
public:
    /// No handle, no buffer, not connected.
    nxSocket();

    /// Closes a valid handle, also one that Close() has closed already, which then fails and logs.
    ~nxSocket();

    nxSocket(nxSocket const&) = delete;

    /// Shares handle and buffer; what was held before is neither closed nor freed. Both objects would close
    /// and free the two, so all but one of them must never be destroyed.
    nxSocket& operator=(nxSocket const&) = default;

    /// @name Life
    /// @{

    nxErrorEnum Create(); ///< TCP.
    nxErrorEnum Create(NX_SOCKET_TYPE type);

    /// Makes the address buffer, then the socket, with SO_REUSEADDR. Neither a handle nor a buffer that the
    /// object has already is closed or freed. With an unknown type the handle stays as it was, and that
    /// decides the result.
    /// @return OK; NX_ERR_INVALID_PARAMETER for an unknown domain; else NX_ERR_SOCKET_CREATE_FAILED, with the
    ///         handle open when only the option could not be set.
    nxErrorEnum Create(NX_SOCKET_DOMAIN domain, NX_SOCKET_TYPE type);

    nxErrorEnum CreateAndSetBufferSize(NX_SOCKET_TYPE type);

    /// Create(), then both buffer sizes from KVT_INBOUND_BUFFER_SIZE and KVT_OUTBOUND_BUFFER_SIZE, in bytes,
    /// of which the low 32 bits count; 1048576 where a key is not set or no number.
    /// @return that of Create(). How the sizing went is only logged, success at level Info.
    nxErrorEnum CreateAndSetBufferSize(NX_SOCKET_DOMAIN domain, NX_SOCKET_TYPE type);

    /// Closes the handle and clears the connected flag. The handle keeps its value, so IsValid() stays true;
    /// a second Close() fails and can't hit a descriptor that somebody else was given since.
    /// @return OK; NX_ERR_SOCKET_CLOSE_FAILED, which logs.
    nxErrorEnum Close();

    /// Whether there is a handle, closed or not.
    bool IsValid() const;

    /// A record of what this object did last, not the connection's state: set by Connect() and Accept(),
    /// cleared by Close(), by a failed receive and by a failed MulticastJoin(). No operation asks for it.
    bool IsConnected() const;

    /// The descriptor in the low 32 bits; all bits set for none. The upper bits tell handles of one
    /// descriptor's number apart.
    unsigned long long GetSocket() const;
    /// @}

    /// @name Options
    /// Levels, names and values are the system's. Each gives OK or NX_ERR_INVALID_PARAMETER, also without a
    /// socket.
    /// @{
    nxErrorEnum SetSocketOption(int level, int name, void const* value, int length);
    nxErrorEnum SetSocketOptionFlag(int level, int name, bool on);
    nxErrorEnum SetSocketOptionFlag_NoDelay(bool on);
    nxErrorEnum SetInboundBufferSize(unsigned int const& bytes);
    nxErrorEnum SetOutboundBufferSize(unsigned int const& bytes);
    nxErrorEnum SetBufferSize(unsigned int const& bytes); ///< The inbound one only.

    /// What ReceiveMsgWithDestinationAddress() needs. A failure logs.
    nxErrorEnum SetReceiveMsgWithDestinationAddressSockOpts(bool on);
    /// @}

    /// @name Connections
    /// @{

    /// Waits for the connection; a UDP socket takes the address as its only peer.
    /// @return OK; NX_ERR_NOT_INITIALISED before Create(); NX_ERR_SOCKET_INVALID_HANDLE;
    ///         NX_ERR_SOCKET_INVALID_HOST_ADDRESS, for 255.255.255.255 too, with the address in the buffer
    ///         overwritten;
    ///         NX_ERR_SOCKET_CONNECT_FAILED, which logs. A failure leaves the connected flag alone.
    nxErrorEnum Connect(std::string const& host, int const& port);

    /// @param port  its low 16 bits; 0 lets the system choose.
    /// @return OK; NX_ERR_NOT_INITIALISED before Create(); NX_ERR_SOCKET_INVALID_HANDLE;
    ///         NX_ERR_SOCKET_BIND_FAILED.
    nxErrorEnum Bind(std::string const& host, int const& port);
    nxErrorEnum Bind(int const& port); ///< To every local address.

    /// Lets up to 5 connections wait to be accepted.
    /// @return OK; NX_ERR_SOCKET_INVALID_HANDLE; NX_ERR_SOCKET_LISTEN_FAILED.
    nxErrorEnum Listen() const;

    /// Waits for a connection and hands it to `accepted`, whose own handle is overwritten. The peer's address
    /// goes to this listener's buffer; `accepted` gets none, so Connect() and Bind() on it give
    /// NX_ERR_NOT_INITIALISED.
    /// @return OK, also when no connection could be had: `accepted.IsValid()` tells.
    ///         NX_ERR_SOCKET_INVALID_HANDLE.
    nxErrorEnum Accept(nxSocket& accepted) const;

    /// Neither is available: both log and give NX_ERR_NOT_IMPLEMENTED.
    nxErrorEnum ConnectLocal(std::string const& path);
    nxErrorEnum BindLocal(std::string const& path);

    /// Joins a multicast group at the interface to which the system's route for it leads.
    ///
    /// Makes the socket non-blocking for good, joined or not: from then on a receive with nothing waiting
    /// fails.
    /// @return OK; NX_ERR_SOCKET_INVALID_HANDLE, with a line at level Info; NX_ERR_SOCKET_CONNECT_FAILED,
    ///         which logs and clears the connected flag.
    nxErrorEnum MulticastJoin(std::string const& group);

    /// @return OK; NX_ERR_SOCKET_INVALID_HANDLE; NX_ERR_SOCKET_CONNECT_FAILED, which logs.
    nxErrorEnum MulticastLeave(std::string const& group);
    /// @}

    /// @name Sending
    /// One system call each, without a copy. A socket that is non-blocking may take only the first bytes;
    /// only GatherSend() tells how many.
    /// @{

    /// @return OK, however many bytes went out; NX_ERR_SOCKET_INVALID_HANDLE; NX_ERR_SOCKET_SEND_FAILED, also
    ///         for a negative length.
    nxErrorEnum Send(char const* data, int length) const;
    nxErrorEnum Send(std::string const& data) const;
    nxErrorEnum Send(nxByteArray const& data) const;

    /// Sends the buffers in their order, without joining them; as one datagram over UDP.
    /// @param count      above 1024 it takes more than one system call, and fails over UDP.
    /// @param bytesSent  0 on failure.
    /// @return OK; NX_ERR_SOCKET_SEND_FAILED, which logs, also without a handle.
    nxErrorEnum GatherSend(_WSABUF* buffers, unsigned int const& count, unsigned int& bytesSent) const;

    /// Has entry `index` of an array for GatherSend() borrow the bytes.
    static void SetGatherSendArrayEntry(_WSABUF* buffers, unsigned int const& index, void const* data,
                                        unsigned int const& length);

    /// Sends to the address in the buffer: that of the last Connect(), Bind() or ReceiveFrom().
    /// @return OK; NX_ERR_SOCKET_INVALID_HANDLE; NX_ERR_SOCKET_SEND_FAILED, also before any of these.
    nxErrorEnum SendTo(char const* data, unsigned long long length) const;
    nxErrorEnum SendTo(std::string const& data) const;

    /// Leaves the address in the buffer alone.
    /// @return OK; NX_ERR_SOCKET_INVALID_HANDLE; NX_ERR_SOCKET_SEND_FAILED.
    nxErrorEnum SendToDestination(char const* data, unsigned long long length, std::string const& host,
                                  unsigned int port) const;
    /// @}

    /// @name Receiving
    /// One system call each, which waits for at least one byte unless the socket is non-blocking. The bytes
    /// of a datagram beyond the buffer's size are lost. A failure clears the connected flag.
    /// @{

    /// @param received  what the system answered: 0 when the peer has shut down (or sent an empty datagram),
    ///                  -1 on a failure. Left alone without a handle.
    /// @return OK; NX_ERR_SOCKET_INVALID_HANDLE; NX_ERR_SOCKET_RECEIVE_FAILED for 0 and -1, which log.
    nxErrorEnum Receive(char* buffer, int size, int& received);

    /// The same; the sender's address goes to the buffer of addresses, for a SendTo().
    nxErrorEnum ReceiveFrom(char* buffer, int size, int& received);

    /// The same for a socket with SetReceiveMsgWithDestinationAddressSockOpts(): it also tells to which
    /// address the datagram was sent, such as one of several multicast groups.
    /// @param received     0 on failure.
    /// @param destination  dotted text; empty when the system told none.
    /// @return OK; NX_ERR_SOCKET_INVALID_HANDLE, also for a closed one, and then nothing is changed;
    ///         NX_ERR_SOCKET_RECEIVE_FAILED, which logs unless it stands for an empty datagram.
    nxErrorEnum ReceiveMsgWithDestinationAddress(char* buffer, int size, int& received,
                                                 std::string& destination);
    /// @}

    /// @name Waiting
    /// For something to receive or to accept, for the peer's end, or for a failure of the connection.
    /// @{

    /// A pause that data ends.
    /// @param timeoutMicroseconds  at most 1000000.
    /// @return OK, whether there is data or not, and also when the wait failed; NX_ERR_SOCKET_SELECT_FAILED
    ///         without a handle; NX_ERR_INVALID_PARAMETER for a longer timeout.
    nxErrorEnum Select(unsigned int const& timeoutMicroseconds);

    /// The same.
    /// @param readyCount  1 or, after the timeout or a failed wait, 0; left alone by the two refusals.
    nxErrorEnum Select(unsigned int const& timeoutMicroseconds, unsigned int& readyCount);

    /// @return OK, also when the wait failed; NX_ERR_SOCKET_SELECT_FAILED without a handle.
    nxErrorEnum SelectWithoutTimeout();

    /// Waits for one of several sockets. Only the first 64 different handles are looked at.
    /// @param timeoutMicroseconds  at most 1000000; without sockets it is waited for too.
    /// @param readyCount  how many handles are ready, each counted once; 0 when the wait failed.
    /// @param readable    an entry for each element of `sockets`, false for what was not looked at; left
    ///                    alone on failure.
    /// @return OK, also after the timeout; NX_ERR_INVALID_PARAMETER for a longer one, with both left alone;
    ///         NX_ERR_SOCKET_SELECT_FAILED, also when a socket among them is closed or was never created.
    static nxErrorEnum Select(std::vector<nxSocket*> const& sockets, unsigned int const& timeoutMicroseconds,
                              unsigned int& readyCount, std::vector<bool>& readable);
    /// @}

    /// @name Addresses
    /// @{

    /// Reads four numbers of decimal digits with dots between them and at most one dot behind them. Each is
    /// computed in 32 bits, wraps, and must then be at most 255. Leading zeros have no meaning.
    /// @param address  the first number in the highest byte; left alone on failure.
    /// @return OK; NX_ERR_INVALID_PARAMETER.
    static nxErrorEnum ParseAddress(std::string const& text, unsigned int& address);

    /// Reads an address, which a slash and a count of bits may follow, such as `10.1.2.3/24`: less than 32,
    /// wrapped as the address's numbers are. A slash with nothing behind it counts for nothing.
    ///
    /// The last three are null without a count. A few of their valid values are those that mean null and no
    /// change: the mask of /31 is no change, the host of 255.255.255.255/0 null.
    /// @param addressText  the text in front of the slash; empty on failure.
    /// @param address      0 on failure.
    /// @return OK; NX_ERR_INVALID_PARAMETER.
    static nxErrorEnum ParseAddressAndMask(std::string const& text, std::string& addressText,
                                           unsigned int& address, nxValueWrapper<unsigned int, -1, -2>& mask,
                                           nxValueWrapper<unsigned int, -1, -2>& network,
                                           nxValueWrapper<unsigned int, -1, -2>& host);
    /// @}

private:
    nxErrorEnum _GetDomainSetting(NX_SOCKET_DOMAIN domain);
    nxErrorEnum _InitialiseAddressBuffer();
    nxValueWrapper<unsigned int, -1, -2> _GetAddressBufferSize() const;
    bool _IsInternet() const;
    nxErrorEnum _CheckAddressable() const;
    nxErrorEnum _Bind(unsigned int networkOrderAddress, int port);
    nxErrorEnum _SendTo(char const* data, unsigned long long length, sockaddr_in const* address) const;
    nxErrorEnum _CheckReceived(char const* function, int received);
    nxErrorEnum _Select(timeval* timeout, unsigned int& count) const;

    void _LogError(char const* function) const;

    /// @param error  receives the system's number of the last failure.
    void _LogError(char const* function, int& error) const;

    bool _connected;
    int _family;
    unsigned long long _socket;
    sockaddr_in* _address;
};
