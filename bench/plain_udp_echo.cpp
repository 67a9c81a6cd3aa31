// The reference for the datagram benchmark: a plain C++ UDP echo pair on
// loopback, two processes, both polling without blocking as the
// language does at each image, a 4-byte float each way.
//   orvela_plain_udp_echo PORT N   prints "plain: R round trips a second"
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

sockaddr_in adresse(int port) {
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_port = htons(static_cast<uint16_t>(port));
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return a;
}

// Polls until a datagram comes; its sender in *de.
ssize_t attendre(int fd, float* v, sockaddr_in* de) {
  socklen_t l = sizeof *de;
  for (;;) {
    const ssize_t r = recvfrom(fd, v, sizeof *v, MSG_DONTWAIT, reinterpret_cast<sockaddr*>(de), &l);
    if (r >= 0) return r;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int port = argc > 1 ? std::atoi(argv[1]) : 47312;
  const int n = argc > 2 ? std::atoi(argv[2]) : 20000;
  const sockaddr_in serveur = adresse(port);
  const int s = socket(AF_INET, SOCK_DGRAM, 0);
  if (bind(s, reinterpret_cast<const sockaddr*>(&serveur), sizeof serveur) != 0) return 1;
  const pid_t pid = fork();
  if (pid == 0) {
    sockaddr_in de{};
    float v;
    for (int i = 0; i < n; i++) {
      attendre(s, &v, &de);
      sendto(s, &v, sizeof v, 0, reinterpret_cast<const sockaddr*>(&de), sizeof de);
    }
    _exit(0);
  }
  const int c = socket(AF_INET, SOCK_DGRAM, 0);
  const auto t0 = std::chrono::steady_clock::now();
  for (int i = 0; i < n; i++) {
    float v = static_cast<float>(i);
    sendto(c, &v, sizeof v, 0, reinterpret_cast<const sockaddr*>(&serveur), sizeof serveur);
    sockaddr_in de{};
    attendre(c, &v, &de);
  }
  const double t = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  waitpid(pid, nullptr, 0);
  std::printf("plain: %.0f round trips a second\n", n / t);
  return 0;
}
