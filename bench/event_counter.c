/* A receiver that does nothing but read: prints how many datagrams came to the event port until SIGTERM. */
#include <arpa/inet.h>
#include <signal.h>
#include <stdio.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

static volatile sig_atomic_t ended;
static void end(int signal) { ended = signal; }

int main(void) {
  const struct sockaddr_in address = {
      .sin_family = AF_INET, .sin_port = htons(16549), .sin_addr.s_addr = htonl(INADDR_LOOPBACK)};
  const int receiver = socket(AF_INET, SOCK_DGRAM, 0);
  if (bind(receiver, (const struct sockaddr*)&address, sizeof address) != 0) return 1;
  const struct sigaction action = {.sa_handler = end};
  sigaction(SIGTERM, &action, NULL);
  const struct timeval second = {.tv_sec = 1};  /* for a signal that comes just before recv */
  setsockopt(receiver, SOL_SOCKET, SO_RCVTIMEO, &second, sizeof second);
  puts("ready");
  fflush(stdout);
  unsigned long count = 0;
  char datagram[260];
  while (!ended) count += recv(receiver, datagram, sizeof datagram, 0) >= 0;
  printf("%lu\n", count);
  return 0;
}
