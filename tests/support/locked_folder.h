#pragma once
// A folder nobody may change while the guard lives, the superuser included: nothing can
// be created, renamed or removed in it. Made with the file system's immutable flag where
// the process may set it, else by taking away the write permission (which does not stop
// the superuser; `locked()` then says false and the test should skip, saying why).

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <filesystem>

namespace ferrolund::testing {

class LockedFolder {
public:
    explicit LockedFolder(const std::filesystem::path& folder) : folder_(folder) {
        if (SetImmutable(true)) {
            immutable_ = true;
            locked_ = true;
            return;
        }
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                                                  std::filesystem::perms::others_write,
                                     std::filesystem::perm_options::remove);
        locked_ = ::geteuid() != 0;
    }
    ~LockedFolder() {
        if (immutable_) SetImmutable(false);
        std::error_code ec;
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ec);
    }
    LockedFolder(const LockedFolder&) = delete;
    LockedFolder& operator=(const LockedFolder&) = delete;

    bool locked() const { return locked_; }

private:
    bool SetImmutable(bool on) const {
        const int fd = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY);
        if (fd < 0) return false;
        int flags = 0;
        bool done = ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
        if (done) {
            flags = on ? (flags | FS_IMMUTABLE_FL) : (flags & ~FS_IMMUTABLE_FL);
            done = ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
        }
        ::close(fd);
        return done;
    }

    std::filesystem::path folder_;
    bool immutable_ = false;
    bool locked_ = false;
};

}  // namespace ferrolund::testing
