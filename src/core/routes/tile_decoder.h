#pragma once
// Tiles read and their references found in worker threads, ahead of the route check,
// which takes the results one by one in tile order on its own thread. The workers only
// read files and decode: everything that decides, tells the user or writes a file stays
// with the caller. Once the caller wants the tiles' XML (after the first missing asset),
// the workers make it too, for the tiles they start from then on.

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "routes/tile_references.h"

namespace ferrolund::routes {

// A reference as the check takes it: the asset's path worked out beforehand.
struct DecodedReference {
    std::string provider, product;
    std::string path;       // AssetPath of the reference
    bool transfer = false;  // the path holds "TransferPoints", any case
};

struct DecodedTile {
    bool decoded = false;  // false: the file could not be read or converted; ask the converter why
    std::vector<DecodedReference> references;
    std::optional<DescriptionFault> fault;
    std::string bytes;              // the file as read
    std::optional<std::string> xml;  // its XML, when it was wanted before the tile was started
};

// Reads one tile file and finds its references, their paths below `gameRoot`; with
// `wantXml` its XML is made too.
DecodedTile DecodeTile(const std::filesystem::path& file, const std::string& gameRoot, bool wantXml);

class TileDecoder {
public:
    // `tiles` files in all; their paths are handed over with Provide, in order.
    TileDecoder(std::size_t tiles, std::string gameRoot, bool wantXml, unsigned workers = DefaultWorkers());
    ~TileDecoder();
    TileDecoder(const TileDecoder&) = delete;
    TileDecoder& operator=(const TileDecoder&) = delete;

    // The path of the next tile not yet provided.
    void Provide(std::filesystem::path file);
    std::size_t provided() const { return provided_; }
    // From now on the workers make each tile's XML as well.
    void WantXml();
    // The result of tile `index` (provided earlier), once it is ready within `patience`;
    // empty otherwise. Each tile is taken once.
    std::optional<DecodedTile> Take(std::size_t index, std::chrono::milliseconds patience);

    static unsigned DefaultWorkers();

private:
    void Work();

    std::mutex mutex_;
    std::condition_variable work_;   // a tile was provided, or the end came
    std::condition_variable done_;   // a tile was decoded
    std::vector<std::filesystem::path> files_;
    std::vector<std::optional<DecodedTile>> results_;
    std::size_t provided_ = 0;
    std::size_t claimed_ = 0;
    const std::string gameRoot_;
    bool wantXml_;
    bool stopping_ = false;
    std::vector<std::thread> workers_;
};

}  // namespace ferrolund::routes
