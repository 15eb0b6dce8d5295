#ifndef LUMIDEX_BENCH_PEERS_H_
#define LUMIDEX_BENCH_PEERS_H_

// Other readers of metadata, for comparison. A build without their libraries has none.

#include <string>
#include <vector>

namespace bench {

struct Peer {
  std::string name;
  void (*read)(const char* path);  // whatever the file holds
};

std::vector<Peer> AllPeers();

}  // namespace bench

#endif  // LUMIDEX_BENCH_PEERS_H_
