#pragma once

#include "commands/commandsfwd.h"
#include "images/uploadrules.h"
#include "platform/platformfwd.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Control {
struct Settings;
} // namespace Vantry::Control

namespace Vantry::Images {

// Why copying an image failed, in words for the user; empty when it worked.
using CopyError = QString;

// Copies source to destination, replacing what is there only once the copy is whole (a
// full disk leaves the old file as it was). A source that is the destination itself is
// left alone.
CopyError CopyImageFile(const QString &source, const QString &destination);

// Puts image files into the image folder and rewrites the image addresses of the document.
//
// Inserting an image (the image dialog and InsertImageNoPrompt) goes through
// placeInsertedImage:
// - without CopyImagesWhenInserted, or without an ImageDirectory, the file stays where it
//   is and its path is written as it was picked;
// - with it, the file is copied into ImageDirectory (created when missing). Its name is
//   kept, replacing a file of that name, unless IncermentExistingFileNames asks for a free
//   numbered name (GetUniqueImageFileName). A file already in the folder is not copied.
// - the src written for a copy is insertedImageSource: ImageVCDirectory + name when the
//   host gives the folder's web address, else the path relative to a local BaseURL, else a
//   file: URL under a web BaseURL, else the absolute path; so the design view shows the
//   copy and the saved page points at it.
// - with UploadImagesWhenInserted (which wins over copying) the file goes to the FTP server
//   through the upload form instead, and the src is the address the web site publishes it
//   at (publishedAddress: ImageVCDirectory + the path below the upload root, against
//   BaseURL). A failed or cancelled upload inserts nothing.
// Images uploaded by the UploadImage command go in at the selection as they reach the
// server (insertUploadedImage).
// Each placed copy is announced by ImageInserted once the command has put it into the
// document (announcePlaced), then HTMLChanged; the executor then marks the document dirty.
// A copy that fails is explained to the user and the command inserts nothing.
class ImagePlacement
{
public:
    struct Hooks
    {
        std::function<UserPrompts &()> prompts;
        // Document loaded, no start-up load pending, control initialised.
        std::function<bool()> isReady;
        std::function<void(const QString &fileName, const QString &filePath)> imageInserted;
        std::function<void()> htmlChanged;
        std::function<void()> markDirty;
        // The document takes edits: the design view shows.
        std::function<bool()> designViewActive;
        // Sends a picked file to the server for insertion; nothing, the user told why,
        // when it did not get there.
        std::function<std::optional<UploadedImage>(const QString &path)> upload;
    };

    ImagePlacement(const Control::Settings &settings, Platform::DesignSurface &surface,
        Commands::SelectionAccess &selection, Platform::DocumentReferences &references,
        Hooks hooks);

    // The src to write for an image the user picked; empty (the user told why) when it
    // could not be placed.
    QString placeInsertedImage(const QString &path);
    // After an insertion: announces the copies it placed when it went into the document;
    // forgets them otherwise.
    void announcePlaced(bool inserted);
    // Puts an uploaded image in at the selection, with the address it is published at, and
    // announces it like a copy: ImageInserted (its name and server folder), HTMLChanged,
    // isDirty. False, the user told why, when the document cannot take it.
    bool insertUploadedImage(const UploadedImage &image);

    // fileName, or its first numbered variant (name_001.ext ...) free in ImageDirectory.
    // After 999 the name numbered 999 is returned even though it exists.
    QString GetUniqueImageFileName(const QString &fileName) const;

    // Copies every image of the document into toLocation (a folder path ending in a
    // separator; created when missing, one level). Stops at the first file that cannot be
    // copied and says which.
    void CopyImageFiles(const QString &toLocation);
    // Every image's src becomes sPath followed by its file name; sPath is used as given.
    void ChangeImagePath(const QString &sPath);
    // Replaces the selected image's picture (or the background of the selected table) with
    // a copy in ImageDirectory under a free name; with an empty path the user picks one.
    void ChangeImageFromSelectedElement(const QString &sImagePath, const QString &sImageFileName);
    // Takes the background from the selected table. A selected image is left as it is:
    // hosts have always seen this call leave it.
    void RemoveImageFromSelectedElement();
    // The design view's double click: with ChangeImageOnDblClick, an element whose tag name
    // occurs in ChangeImageOnDblClickTags (a plain substring test) gets a new picture.
    void doubleClicked();

private:
    struct Placed
    {
        QString fileName;
        QString folder;
    };
    // The copy of source as name in the image folder; false, the user told why, on failure.
    bool copyIntoImageFolder(const QString &source, const QString &name);
    QString imageFolder() const;

    const Control::Settings &m_settings;
    Platform::DesignSurface &m_surface;
    Commands::SelectionAccess &m_selection;
    Platform::DocumentReferences &m_references;
    Hooks m_hooks;
    QList<Placed> m_placed;
};

} // namespace Vantry::Images
