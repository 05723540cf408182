#include "consists/consist_rows.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

#include "assets/asset_index.h"
#include "assets/list_grid.h"
#include "tools/codepage.h"
#include "tools/guid.h"
#include "tools/names.h"
#include "tools/numbers.h"
#include "tools/text_repair.h"

namespace ferrolund::consists {

namespace {

// The selection without repeats or rows past the end, in row order.
std::vector<std::size_t> Valid(std::vector<std::size_t> selected, std::size_t count) {
    std::sort(selected.begin(), selected.end());
    selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
    selected.erase(std::lower_bound(selected.begin(), selected.end(), count), selected.end());
    return selected;
}

// A 1-based row of the pool from the value of an expression, kept within the pool.
std::size_t PoolRow(double value, std::size_t pool) {
    const double whole = std::floor(value);
    if (whole < 1) return 0;
    if (whole > static_cast<double>(pool)) return pool - 1;
    return static_cast<std::size_t>(whole) - 1;
}

// The first row after `current` (from the first with none) whose name holds the text, both
// read as a person reads them, without regard to case or accents.
template <typename NameOf>
std::optional<std::size_t> FindFrom(std::size_t count, std::string_view text, std::optional<std::size_t> current,
                                    NameOf nameOf) {
    const std::string wanted = tools::NameKey(text);
    if (wanted.empty()) return std::nullopt;
    for (std::size_t r = current ? *current + 1 : 0; r < count; ++r) {
        if (tools::NameKey(tools::FixEntitiesCopy(nameOf(r))).find(wanted) != std::string::npos) return r;
    }
    return std::nullopt;
}

}  // namespace

ConsistIdentity NewConsistIdentity(std::string fileFormName) {
    return {std::move(fileFormName), tools::NewGuidText(), tools::NewDeltaId()};
}

ConsistIdentity IdentityOf(const TemplateRow& row) { return {row.name, row.key, row.consistId}; }

TemplateRow EntryFor(const assets::AssetRow& stock, const ConsistIdentity& consist) {
    TemplateRow row;
    row.name = consist.name;
    row.key = consist.key;
    row.consistId = consist.consistId;
    row.provider = stock.provider;
    row.product = stock.product;
    row.blueprintId = stock.path;
    const std::size_t size = row.blueprintId.size();
    if (size >= 3 && tools::EqualsIgnoreCase(std::string_view(row.blueprintId).substr(size - 3), "bin"))
        row.blueprintId.replace(size - 3, 3, "xml");
    row.flipped = "0";
    row.entryId = tools::NewDeltaId();
    return row;
}

void AppendStock(std::vector<TemplateRow>& rows, const ConsistIdentity& consist,
                 const std::vector<assets::AssetRow>& stock) {
    for (const assets::AssetRow& item : stock) rows.push_back(EntryFor(item, consist));
}

std::vector<std::size_t> InsertAfter(std::vector<TemplateRow>& rows, std::size_t at,
                                     const std::vector<assets::AssetRow>& stock, int times) {
    std::vector<std::size_t> added;
    if (at >= rows.size()) return added;
    const ConsistIdentity consist = IdentityOf(rows[at]);
    std::vector<TemplateRow> made;
    for (int n = 0; n < times; ++n) AppendStock(made, consist, stock);
    rows.insert(rows.begin() + static_cast<long>(at) + 1, made.begin(), made.end());
    for (std::size_t r = 0; r < made.size(); ++r) added.push_back(at + 1 + r);
    return added;
}

std::vector<std::size_t> ReplaceRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected,
                                     const std::vector<assets::AssetRow>& stock) {
    const std::vector<std::size_t> chosen = Valid(selected, rows.size());
    std::vector<std::size_t> placed;
    if (chosen.empty() || stock.empty()) return placed;
    std::vector<TemplateRow> out;
    out.reserve(rows.size() + chosen.size() * stock.size());
    std::size_t next = 0;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        if (next < chosen.size() && chosen[next] == r) {
            ++next;
            const ConsistIdentity consist = IdentityOf(rows[r]);
            for (const assets::AssetRow& item : stock) {
                placed.push_back(out.size());
                out.push_back(EntryFor(item, consist));
            }
        } else {
            out.push_back(std::move(rows[r]));
        }
    }
    rows = std::move(out);
    return placed;
}

void DeleteRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected) {
    const std::vector<std::size_t> chosen = Valid(selected, rows.size());
    for (auto it = chosen.rbegin(); it != chosen.rend(); ++it) rows.erase(rows.begin() + static_cast<long>(*it));
}

void FlipRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected) {
    for (std::size_t r : Valid(selected, rows.size())) {
        std::string& flipped = rows[r].flipped;
        if (flipped == "0") {
            flipped = "1";
        } else if (flipped == "1") {
            flipped = "0";
        }
    }
}

void RenameRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected, const std::string& name) {
    for (std::size_t r : Valid(selected, rows.size())) rows[r].name = name;
}

std::optional<std::size_t> FindName(const std::vector<TemplateRow>& rows, std::string_view text,
                                    std::optional<std::size_t> current) {
    return FindFrom(rows.size(), text, current, [&rows](std::size_t r) { return std::string_view(rows[r].name); });
}

std::optional<std::size_t> FindStockName(const std::vector<assets::AssetRow>& stock, std::string_view text,
                                         std::optional<std::size_t> current) {
    return FindFrom(stock.size(), text, current, [&stock](std::size_t r) { return std::string_view(stock[r].name); });
}

RandomSource SeededRandom(std::uint64_t seed) {
    auto engine = std::make_shared<std::mt19937_64>(seed);
    return [engine] {
        const double r = std::generate_canonical<double, 53>(*engine);
        return r < 1.0 ? r : std::nextafter(1.0, 0.0);
    };
}

std::vector<std::size_t> GenerateDraws(std::size_t pool, long wagons, long randomness, const RandomSource& random) {
    std::vector<std::size_t> draws;
    if (pool == 0 || wagons < 1) return draws;
    const double p = static_cast<double>(pool);
    if (randomness >= 1 && randomness <= 9) {
        const long half = wagons / 2;
        for (long n = 0; n < half + 1; ++n) {
            const double spread = p / 2 - 1;
            draws.push_back(spread <= 0 ? 0 : PoolRow(spread * random() + 1, pool));
        }
        for (long n = 0; n < wagons - half - 1; ++n) draws.push_back(PoolRow((p - p / 2) * random() + p / 2, pool));
    } else if (randomness == 10) {
        for (long n = 0; n < wagons; ++n) draws.push_back(PoolRow(p * random() + 1, pool));
    } else if (randomness == 0) {
        draws.assign(static_cast<std::size_t>(wagons), PoolRow(p * random() + 1, pool));
    }
    return draws;
}

long WholeNumber(std::string_view text) {
    const double value = tools::VbVal(text);
    if (!std::isfinite(value)) return 0;
    return static_cast<long>(std::trunc(std::clamp(value, -1e9, 1e9)));
}

base::Status ReadStockList(const std::string& path, std::vector<assets::AssetRow>& rows) {
    rows.clear();
    services::ReportTable table;
    if (base::Status failed = assets::ReadListFile(path, table)) return failed;
    for (const auto& cells : table.rows) {
        assets::AssetRow row = assets::AssetRow::FromCells(cells);
        if (!assets::IsHeadingRow(row)) rows.push_back(std::move(row));
    }
    return {};
}

}  // namespace ferrolund::consists
