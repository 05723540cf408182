#include "textures/tga_image.h"

#include <cstdint>

namespace ferrolund::textures {

namespace {

base::RunError Bad(const std::string& why) { return base::RunError{base::err::kTypeMismatch, why}; }

}  // namespace

base::Status DecodeTga(std::string_view bytes, RgbaImage& out) {
    constexpr std::size_t kHeader = 18;
    if (bytes.size() < kHeader) return Bad("This is not a .tga picture: the file is too short.");
    auto byte = [&](std::size_t at) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[at])); };
    const unsigned idLength = byte(0), mapType = byte(1), type = byte(2);
    const int width = static_cast<int>(byte(12) | byte(13) << 8);
    const int height = static_cast<int>(byte(14) | byte(15) << 8);
    const unsigned depth = byte(16), descriptor = byte(17);
    const bool grey = type == 3 || type == 11;
    const bool packed = type == 10 || type == 11;
    if (mapType != 0 || !(type == 2 || type == 3 || type == 10 || type == 11))
        return Bad("Only true-colour and grey .tga pictures can be shown; this one is of type " +
                   std::to_string(type) + ".");
    if ((grey && depth != 8) || (!grey && depth != 24 && depth != 32))
        return Bad("A .tga picture of " + std::to_string(depth) + " bits a pixel cannot be shown.");
    if (width == 0 || height == 0) return Bad("The .tga picture has no pixels.");
    const std::size_t size = depth / 8;
    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    std::size_t at = kHeader + idLength;

    // The pixels in file order, each as R, G, B, A.
    std::vector<std::uint8_t> inOrder(pixels * 4);
    auto put = [&](std::size_t index, std::size_t from) {
        std::uint8_t* p = &inOrder[index * 4];
        if (grey) {
            p[0] = p[1] = p[2] = static_cast<std::uint8_t>(byte(from));
            p[3] = 255;
            return;
        }
        p[0] = static_cast<std::uint8_t>(byte(from + 2));
        p[1] = static_cast<std::uint8_t>(byte(from + 1));
        p[2] = static_cast<std::uint8_t>(byte(from));
        p[3] = size == 4 ? static_cast<std::uint8_t>(byte(from + 3)) : 255;
    };
    for (std::size_t done = 0; done < pixels;) {
        std::size_t count = 1;
        bool repeat = false;
        if (packed) {
            if (at >= bytes.size()) return Bad("The .tga picture is cut short.");
            const unsigned head = byte(at++);
            count = (head & 0x7F) + 1;
            repeat = head & 0x80;
        }
        const std::size_t need = repeat ? size : size * count;
        if (at + need > bytes.size()) return Bad("The .tga picture is cut short.");
        if (done + count > pixels) return Bad("A packet of the .tga picture runs past its last pixel.");
        for (std::size_t i = 0; i < count; ++i) put(done + i, repeat ? at : at + i * size);
        at += need;
        done += count;
        if (!packed) {  // one plain run of all the pixels
            for (; done < pixels; ++done, at += size) {
                if (at + size > bytes.size()) return Bad("The .tga picture is cut short.");
                put(done, at);
            }
        }
    }

    // Rows stored from the bottom unless the descriptor says top first; columns from the
    // right when it says so.
    const bool topFirst = descriptor & 0x20;
    const bool rightFirst = descriptor & 0x10;
    out.width = width;
    out.height = height;
    out.pixels.assign(pixels * 4, 0);
    for (int row = 0; row < height; ++row) {
        const int y = topFirst ? row : height - 1 - row;
        for (int col = 0; col < width; ++col) {
            const int x = rightFirst ? width - 1 - col : col;
            const std::size_t from = (static_cast<std::size_t>(row) * width + col) * 4;
            const std::size_t to = (static_cast<std::size_t>(y) * width + x) * 4;
            for (int c = 0; c < 4; ++c) out.pixels[to + c] = inOrder[from + c];
        }
    }
    return {};
}

}  // namespace ferrolund::textures
