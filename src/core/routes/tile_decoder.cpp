#include "routes/tile_decoder.h"

#include <algorithm>
#include <fstream>

#include "routes/record_lines.h"
#include "routes/route_check.h"
#include "serz/codec.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

DecodedTile DecodeTile(const std::filesystem::path& file, const std::string& gameRoot, bool wantXml) {
    DecodedTile tile;
    try {
        std::ifstream in(file, std::ios::binary | std::ios::ate);
        if (!in.is_open()) return tile;
        const std::streamoff size = in.tellg();
        if (size < 0) return tile;
        tile.bytes.resize(static_cast<std::size_t>(size));
        in.seekg(0);
        if (!in.read(tile.bytes.data(), size)) return DecodedTile{};
        RecordLines lines(tile.bytes);
        tile.fault = FindReferences(lines, [&](const std::string& provider, const std::string& product,
                                               const std::string& blueprintId) {
            std::string path = AssetPath(gameRoot, provider, product, blueprintId);
            const bool transfer = tools::InStr(path, "TransferPoints") > 0;
            tile.references.push_back({provider, product, std::move(path), transfer});
        });
        if (!lines.readToEnd()) return DecodedTile{};
        if (wantXml) {
            std::string xml;
            if (serz::BinaryToXml(tile.bytes, xml)) return DecodedTile{};
            tile.xml = std::move(xml);
            tile.bytes.clear();
        }
        tile.decoded = true;
    } catch (const std::exception&) {
        return DecodedTile{};  // memory ran out: the caller reads the tile again the usual way
    }
    return tile;
}

unsigned TileDecoder::DefaultWorkers() { return std::clamp(std::thread::hardware_concurrency(), 1u, 8u); }

TileDecoder::TileDecoder(std::size_t tiles, std::string gameRoot, bool wantXml, unsigned workers)
    : files_(tiles), results_(tiles), gameRoot_(std::move(gameRoot)), wantXml_(wantXml) {
    for (unsigned k = 0; k < std::max(workers, 1u); ++k) workers_.emplace_back([this] { Work(); });
}

TileDecoder::~TileDecoder() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    work_.notify_all();
    for (std::thread& worker : workers_) worker.join();
}

void TileDecoder::Provide(std::filesystem::path file) {
    {
        std::lock_guard lock(mutex_);
        files_[provided_++] = std::move(file);
    }
    work_.notify_one();
}

void TileDecoder::WantXml() {
    std::lock_guard lock(mutex_);
    wantXml_ = true;
}

std::optional<DecodedTile> TileDecoder::Take(std::size_t index, std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    if (!done_.wait_for(lock, patience, [&] { return results_[index].has_value(); })) return std::nullopt;
    std::optional<DecodedTile> result = std::move(results_[index]);
    results_[index].reset();
    return result;
}

void TileDecoder::Work() {
    for (;;) {
        std::size_t index = 0;
        bool wantXml = false;
        std::filesystem::path file;
        {
            std::unique_lock lock(mutex_);
            work_.wait(lock, [&] { return stopping_ || claimed_ < provided_; });
            if (stopping_) return;
            index = claimed_++;
            file = std::move(files_[index]);
            wantXml = wantXml_;
        }
        DecodedTile tile = DecodeTile(file, gameRoot_, wantXml);
        {
            std::lock_guard lock(mutex_);
            results_[index] = std::move(tile);
        }
        done_.notify_all();
    }
}

}  // namespace ferrolund::routes
