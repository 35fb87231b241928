/// What tavix-inspect computes and prints.
#pragma once

#include "options.h"

#include <TAVIX20.h>

#include <memory>

struct Inspection {
    std::unique_ptr<CTavixImage8> picture; ///< As loaded.
    long threshold;                        ///< The automatic threshold.
    CBlobRectArray blobs;
    TavixArray::CPixelArrayArray points; ///< The pixels of each blob, where they are asked for.
};

/// Loads the picture, makes a two-level copy and lists its blobs, those in the region unless that
/// is null. Nothing, with the reason on standard error, when the file is not a picture with one or
/// three channels.
std::optional<Inspection> Inspect(const Options &options, HRGN region);

/// Prints threshold, blobs and their number to standard output.
void PrintReport(const Inspection &inspection);

/// Writes the blobs as comma-separated values. False when the file cannot be written.
bool WriteCsv(const CBlobRectArray &blobs, const std::string &path);

/// Writes a line for each blob, its pixels as "x,y;". False when the file cannot be written.
bool WritePoints(const TavixArray::CPixelArrayArray &blobs, const std::string &path);
