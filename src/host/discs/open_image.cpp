#include "host/discs/cue_sheet.h"
#include "host/discs/file_finder.h"
#include "host/discs/image_disc.h"
#include "host/discs/nrg_image.h"
#include "host/discs/toc_sheet.h"

#include "base/text.h"

#include <array>
#include <utility>

namespace tonquay::host {

namespace {

namespace fs = std::filesystem;

std::wstring endingOf(const fs::path& name)
{
    return base::upper(base::fromHostBytes(name.extension().string()));
}

base::Result<Sheet> readNrg(ImageFile& image)
{
    std::array<std::byte, nrgFooterBytes> footer{};
    const std::int64_t footerOffset = image.length() - static_cast<std::int64_t>(footer.size());
    const std::size_t got = footerOffset < 0 ? 0 : image.read(footerOffset, footer);
    const auto chain = nrgChain(std::span(footer).first(got), image.length(), image.path());
    if (!chain)
        return chain.failure();
    std::vector<std::byte> chunks(static_cast<std::size_t>(chain->bytes));
    chunks.resize(image.read(chain->offset, chunks));
    return parseNrg(chunks, *chain, image.path());
}

base::Result<Sheet> readSheet(const fs::path& path, ImageFile& opened)
{
    if (endingOf(path) == L".NRG")
        return readNrg(opened);
    const auto bytes = ImageFile::readAll(path, maxSheetBytes);
    if (!bytes)
        return bytes.failure();
    return endingOf(path) == L".TOC" ? parseTocSheet(*bytes, path.string()) : parseCueSheet(*bytes, path.string());
}

/// A failure at the line of the sheet that names the file.
base::Failure atLine(const Sheet& sheet, const SheetFile& file, const base::Failure& failure)
{
    const std::string line = file.line > 0 ? ":" + std::to_string(file.line) : "";
    const std::string what = failure.where == sheet.path ? failure.text : base::describe(failure);
    return {failure.kind, sheet.path + line, what};
}

base::Result<ImageFile> openFile(const Sheet& sheet, const SheetFile& entry)
{
    const bool sound = entry.kind == SheetFile::Kind::sound;
    const auto path = findFile(sheet.path, entry.name, sound);
    if (!path)
        return atLine(sheet, entry, path.failure());
    auto file = ImageFile::open(*path, sound);
    if (!file)
        return atLine(sheet, entry, file.failure());
    return file;
}

}

bool isImageName(const fs::path& name)
{
    const std::wstring ending = endingOf(name);
    return ending == L".CUE" || ending == L".TOC" || ending == L".NRG";
}

base::Result<std::unique_ptr<Disc>> openImage(const fs::path& image)
{
    if (!isImageName(image))
        return base::Failure{base::Failure::Kind::invalid, image.string(), "a disc image is a .cue, .toc or .nrg file"};
    auto opened = ImageFile::open(image, false);
    if (!opened)
        return opened.failure();
    auto sheet = readSheet(image, *opened);
    if (!sheet)
        return sheet.failure();

    std::vector<ImageFile> files;
    std::vector<std::int64_t> lengths;
    for (const SheetFile& entry : sheet->files) {
        auto file = openFile(*sheet, entry);
        if (!file)
            return file.failure();
        lengths.push_back(file->length());
        files.push_back(std::move(*file));
    }
    auto layout = layOut(*sheet, lengths);
    if (!layout)
        return layout.failure();
    std::unique_ptr<Disc> disc =
        std::make_unique<ImageDisc>(std::move(*sheet), std::move(*layout), std::move(files), std::move(*opened));
    return disc;
}

}
