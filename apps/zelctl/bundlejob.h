#pragma once

#include "command.h"

#include <optional>

class SimpleCrypt;

/// The sources and the output of `zelctl bundle DIR OUT`.
struct BundleRequest
{
    QString folder;
    QString output;
    QString environmentFile; ///< empty if there is none
    QString keyFile;         ///< protected from being overwritten by the output
    int level = 0;           ///< 0 is the default of the format
};

/// Writes the bundle. Without a key `crypt` is null. A signal that ends zelctl leaves nothing
/// behind.
ExitStatus makeBundle(const BundleRequest& request, const SimpleCrypt* crypt);
/// Checks each member of a bundle and prints how many there are.
ExitStatus verifyBundle(const QString& path, const SimpleCrypt* crypt, bool isJson);
/// Prints the table of contents.
ExitStatus listBundle(const QString& path, const SimpleCrypt* crypt, bool isJson);
