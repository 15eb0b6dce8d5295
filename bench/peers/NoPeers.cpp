#include "Peers.h"

namespace bench {

std::vector<Peer> AllPeers() {
  return {};
}

}  // namespace bench
