#pragma once
// "Save As" of the texture viewer: the picture written in the format its name asks for,
// an old file of that name kept as a back-up.

#include <QImage>
#include <string>

namespace ferrolund::screens {

// Writes `image` to `systemPath`; the old file there, if any, is renamed by the back-up
// rule once the new one is complete. Gives the message for the user, empty on success.
std::string SavePicture(const QImage& image, const std::string& systemPath);

}  // namespace ferrolund::screens
