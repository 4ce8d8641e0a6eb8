/* The least a program must do to send an event: resolve the loopback host, send six bytes, close. */
#include <netdb.h>
#include <netinet/in.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

int main(void) {
  static const unsigned char event[] = {42, 0, 0, 0, 1, 1};
  struct sockaddr_in server = {.sin_family = AF_INET, .sin_port = htons(16549)};
  const struct hostent* host = gethostbyname("localhost");
  if (host == NULL) return 1;
  memcpy(&server.sin_addr, host->h_addr_list[0], sizeof(server.sin_addr));
  const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
  if (sendto(descriptor, event, sizeof(event), 0, (struct sockaddr*)&server, sizeof(server)) != sizeof(event)) return 1;
  return close(descriptor);
}
