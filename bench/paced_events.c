/* The least a program must do to send many events to a receiver without losing one: it asks the kernel how full the
 * receiver's queue is before every 69 of them, which fit into what is then free, and waits while it is half full.
 *
 * usage: paced_events COUNT */
#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

/* True while the queue of the socket at the event port is more than half full. */
static int is_half_full(int kernel) {
  struct {
    struct nlmsghdr header;
    struct inet_diag_req_v2 body;
  } request = {{sizeof request, SOCK_DIAG_BY_FAMILY, NLM_F_REQUEST, 0, 0},
               {.sdiag_family = AF_INET,
                .sdiag_protocol = IPPROTO_UDP,
                .idiag_ext = 1 << (INET_DIAG_SKMEMINFO - 1),
                .idiag_states = ~0U,
                .id = {.idiag_dport = htons(16549),
                       .idiag_dst = {htonl(INADDR_LOOPBACK)},
                       .idiag_cookie = {INET_DIAG_NOCOOKIE, INET_DIAG_NOCOOKIE}}}};
  _Alignas(struct nlmsghdr) char answer[1024];
  if (send(kernel, &request, sizeof request, 0) < 0) exit(1);
  int left = (int)recv(kernel, answer, sizeof answer, 0);
  const struct nlmsghdr* header = (struct nlmsghdr*)answer;
  if (left < 0 || header->nlmsg_type == NLMSG_ERROR) exit(1);
  const struct rtattr* attribute = (struct rtattr*)((struct inet_diag_msg*)NLMSG_DATA(header) + 1);
  left -= (int)((const char*)attribute - answer);
  for (; RTA_OK(attribute, left); attribute = RTA_NEXT(attribute, left)) {
    const unsigned int* numbers = RTA_DATA(attribute);
    if (attribute->rta_type == INET_DIAG_SKMEMINFO)
      return numbers[SK_MEMINFO_RMEM_ALLOC] > numbers[SK_MEMINFO_RCVBUF] / 2;
  }
  exit(1);
}

int main(int argc, char** argv) {
  const struct sockaddr_in receiver = {
      .sin_family = AF_INET, .sin_port = htons(16549), .sin_addr.s_addr = htonl(INADDR_LOOPBACK)};
  const int kernel = socket(AF_NETLINK, SOCK_DGRAM, NETLINK_SOCK_DIAG);
  const int sender = socket(AF_INET, SOCK_DGRAM, 0);
  const unsigned int count = argc > 1 ? (unsigned int)atoi(argv[1]) : 0;
  for (unsigned int id = 0; id < count; ++id) {
    if (id % 69 == 0) {
      while (is_half_full(kernel)) usleep(50);
    }
    const unsigned char event[] = {(unsigned char)id, (unsigned char)(id >> 8), (unsigned char)(id >> 16), 0, 1, 1};
    if (sendto(sender, event, sizeof event, 0, (const struct sockaddr*)&receiver, sizeof receiver) != sizeof event) return 1;
  }
  return 0;
}
