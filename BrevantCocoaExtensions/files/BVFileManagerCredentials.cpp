// BVFileManager's stored credentials: credentials.xml in the user Brevant folder, both values encrypted
// under the built-in key and kept as Base64 text. The file is owner-only (mode 0600) from the moment it is
// created, since anyone who can read it can recover the password with the key in this library.
#include <unistd.h>

#include <string>

#include "BrevantCocoaExtensions/documents/BVNSXMLDocument.hpp"
#include "BrevantCocoaExtensions/documents/BVNSXMLElement.hpp"
#include "BrevantCocoaExtensions/files/BVEncryption.hpp"
#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/text/BVNSData.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv {

namespace {

constexpr unsigned kOwnerOnlyMode = 0600;

const Text& credentialsKey() {
    static const Text key("hR5kt2v9");
    return key;
}

// The value encrypted under the credentials key, as Base64 text.
Text sealed(const Text& value) {
    return BVNSData::encodedBase64String(
        BVEncryption::encryptStringUsingKey(value, credentialsKey()).value_or(ByteData{}));
}

// The Base64 text of an element decoded and decrypted; null at the first step that fails.
std::optional<Text> opened(const XMLElement& root, const char* name) {
    const std::optional<Text> text =
        BVNSXMLElement::stringValueOfFirstChildElementNamedRecursiveSearch(root, Text(name), false);
    const std::optional<ByteData> cipher = text ? BVNSString::decodedData(*text) : std::nullopt;
    if (!cipher) return std::nullopt;
    return BVEncryption::stringDecryptionForEncryptedDataUsingKey(*cipher, credentialsKey());
}

}  // namespace

std::optional<Text> BVFileManager::credentialsPath() {
    const std::optional<Text> folder = userBrevantDirectory();
    if (!folder) return std::nullopt;
    return Text(folder->toUtf8() + "/credentials.xml");
}

std::shared_ptr<XMLDocument> BVFileManager::credentialsDocument() {
    return BVNSXMLDocument::documentAtPath(credentialsPath());
}

bool BVFileManager::saveCredentialsWithUsernamePassword(const Text& username, const Text& password) {
    const std::optional<Text> path = credentialsPath();
    if (!path) return false;
    auto root = XMLElement::make(Text("Credentials"));
    root->addChild(XMLElement::makeWithStringValue(Text("Username"), sealed(username)));
    root->addChild(XMLElement::makeWithStringValue(Text("Password"), sealed(password)));
    const std::string bytes =
        XMLDocument::make(root)->xmlString(XMLNodePrettyPrint | XMLNodeCompactEmptyElement);
    // The new file replaces the old one by rename, so an older file's wider mode does not carry over.
    return writeBytesToFile(path->toUtf8(), bytes.data(), bytes.size(), true, nullptr, kOwnerOnlyMode);
}

std::optional<ValueDictionary> BVFileManager::savedCredentials() {
    const std::shared_ptr<XMLDocument> document = credentialsDocument();
    const std::shared_ptr<XMLElement> root = document ? document->rootElement() : nullptr;
    if (!root) return std::nullopt;
    std::optional<Text> username = opened(*root, "Username");
    std::optional<Text> password = opened(*root, "Password");
    if (!username || !password) return std::nullopt;
    return ValueDictionary{{Text("credential1"), std::move(*username)},
                           {Text("credential0"), std::move(*password)}};
}

bool BVFileManager::savedCredentialsMatchUsernamePassword(const Text& username, const Text& password) {
    const std::optional<ValueDictionary> saved = savedCredentials();
    if (!saved) return false;
    const Text* storedName = saved->at(Text("credential1")).text();
    const Text* storedPassword = saved->at(Text("credential0")).text();
    return storedName->equals(username, CompareMode::CaseInsensitive) && *storedPassword == password;
}

void BVFileManager::removeSavedCredentials() {
    if (const std::optional<Text> path = credentialsPath()) (void)::unlink(path->toUtf8().c_str());
}

}  // namespace bv
