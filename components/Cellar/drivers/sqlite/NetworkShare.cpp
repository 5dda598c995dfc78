#include "Cellar/drivers/sqlite/NetworkShare.h"

namespace Cellar::Sqlite
{

const char* NetworkFileSystem(std::uint32_t type) noexcept
{
    switch (type) {
    case 0x6969:
        return "NFS";
    case 0x517B:
        return "SMB";
    case 0xFF534D42:
        return "CIFS";
    case 0xFE534D42:
        return "SMB2";
    case 0x5346414F:
        return "AFS";
    case 0x73757245:
        return "Coda";
    case 0x564C:
        return "NCP";
    case 0x00C36400:
        return "Ceph";
    case 0x01021997:
        return "9P";
    case 0x65735546:
        return "FUSE";
    default:
        return nullptr;
    }
}

} // namespace Cellar::Sqlite
