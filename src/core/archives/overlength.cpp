#include "archives/overlength.h"

#include "tools/files.h"

namespace ferrolund::archives {

bool IsOverlength(const std::string& path) {
    const long long length = tools::FileLength(path);
    return length > static_cast<long long>(kMaxArchiveBytes);
}

std::string OverlengthReport(const std::vector<std::string>& archives) {
    std::string text =
        "The following .ap files were over 2 gigabytes in length. This program can't process such files. If "
        "necessary they can be opened with 7zip and items added manually to index.\r\n\r\n";
    for (const auto& name : archives) text += name + "\r\n";
    return text;
}

}  // namespace ferrolund::archives
