// Which process has a socket open.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace mordhost {

struct ProcessOwner {
    uint32_t pid = 0;
    std::string path; // of its image; empty when the system does not tell it
};

// The processes that have the sockets with these inodes open, by inode: of several the one with the least id. Inodes
// that no process has open, or none that this user may look into, are absent.
std::map<uint64_t, ProcessOwner> FindOwners(const std::set<uint64_t>& inodes);

} // namespace mordhost
