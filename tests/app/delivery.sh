# Sourced by faults, load and send_faults: compares the events that a program said it sent with those that arrived.
#
# A receiver stands in the server's place. It is no program of ours, and its buffer is raised, so that nothing is
# lost between the kernel and it.

work=$(mktemp -d)
receiver_process=
trap '[ -z "$receiver_process" ] || kill "$receiver_process" 2>/dev/null || true; rm -rf "$work"' EXIT
: >"$work/claimed"
: >"$work/doubted"

# The datagram in hexadecimal of -id ID -val 1 -type ParameterByte.
datagram_of() { printf '%02x%02x%02x%02x0101\n' $(($1 & 255)) $(($1 >> 8 & 255)) $(($1 >> 16 & 255)) $(($1 >> 24)); }

# Prints "ready" and then each datagram, up to the one with the highest id.
start_receiver() {
  exec {arrivals}< <(exec perl -MSocket -e '
    $| = 1;
    socket($server, PF_INET, SOCK_DGRAM, 0) or die "no socket: $!\n";
    $beyond_limit = 33;  # SO_RCVBUFFORCE, for root; others get what the system allows
    setsockopt($server, SOL_SOCKET, $_, 1 << 23) and last for $beyond_limit, SO_RCVBUF;
    bind($server, sockaddr_in(16549, INADDR_LOOPBACK)) or die "UDP port 16549: $!; is the server running?\n";
    print "ready\n";
    while (defined recv $server, $datagram, 65535, 0) {
      $text = unpack "H*", $datagram;
      last if $text eq "ffffffff0101";
      print "$text\n";
    }
    open $sockets, "<", "/proc/net/udp";
    for (<$sockets>) { print "the kernel dropped $1\n" if /:40A5 .* ([1-9]\d*) *$/ }')
  receiver_process=$!
  read -r -t 20 -u "$arrivals" answer && [ "$answer" = ready ]
}

# Notes that the event with an id was sent, as its status says. Many processes may note at once.
claim() { datagram_of "$1" >>"$work/claimed"; }

# Notes that the event with an id may have been sent or not.
doubt() { datagram_of "$1" >>"$work/doubted"; }

# Ends the receiver. False, with the differences, unless the events claimed are the ones that arrived, whole and once.
delivery_is_as_claimed() {
  "$ura_event" -id 4294967295 -val 1 -type ParameterByte
  timeout 20 sort <&"$arrivals" >"$work/arrived" || { echo "The last event did not arrive" && return 1; }
  sort "$work/claimed" | diff - <(grep -vxFf "$work/doubted" "$work/arrived") >"$work/differences" && return
  echo "Status and arrival differ (<: status 0 and not arrived, >: arrived and status not 0):"
  cat "$work/differences"
  return 1
}
