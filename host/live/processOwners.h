// Finds the process that has a socket open.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace mordhost {

struct ProcessOwner {
    uint32_t pid = 0;
    std::string path; // of its image; empty if the system does not reveal it
};

// The processes that have the sockets with these inodes open, by inode; of several processes, the one with the lowest
// id. Inodes are absent that no process has open, or only one that this user may not inspect.
std::map<uint64_t, ProcessOwner> FindOwners(const std::set<uint64_t>& inodes);

} // namespace mordhost
