#!/usr/bin/env bash
# package.sh FOLDER: builds Amperly for people to install: FOLDER/Amperly.app with the toolkit in it, and a disk image.
#
# With a signing identity and an account for notarising in the environment, both are signed by that identity and
# notarised. Without them the application is signed for this Mac alone, and the image is for trying out.
#   AMPERLY_SIGNING_IDENTITY      "Developer ID Application: …"
#   AMPERLY_SIGNING_CERTIFICATE   the identity as a PKCS #12 file in base64, if it is in no keychain yet
#   AMPERLY_SIGNING_PASSWORD      its password
#   AMPERLY_NOTARY_APPLE_ID, AMPERLY_NOTARY_TEAM_ID, AMPERLY_NOTARY_PASSWORD   the account, and a password for it
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"

fail() { printf 'package: %s\n' "$*" >&2; exit 1; }

(($# == 1)) || fail "usage: packaging/macos/package.sh FOLDER"
[[ $(uname) == Darwin ]] || fail "this needs a Mac"
mkdir -p "$1"
folder=$(cd "$1" && pwd)
application=$folder/Amperly.app
identity=${AMPERLY_SIGNING_IDENTITY:--}
keychain=
user_keychains=()

# Only this user can look into it: the certificate goes through here.
scratch=$(mktemp -d)

clean_up() {
    if [[ -n $keychain ]]; then
        security list-keychains -d user -s ${user_keychains[@]+"${user_keychains[@]}"} || true
        security delete-keychain "$keychain" || true
    fi
    rm -rf "$scratch"
}
trap clean_up EXIT

# A keychain of its own for the identity, beside those that the user has, gone with the end of this script.
import_identity() {
    local certificate=$scratch/identity.p12 password line
    password=$(uuidgen)
    while IFS= read -r line; do
        user_keychains+=("$line")
    done < <(security list-keychains -d user | sed 's/^ *"//; s/" *$//')
    (umask 077 && base64 --decode <<<"$AMPERLY_SIGNING_CERTIFICATE" >"$certificate")
    security create-keychain -p "$password" "$scratch/signing.keychain-db"
    keychain=$scratch/signing.keychain-db
    security set-keychain-settings -lut 21600 "$keychain" # the notary may take longer than a keychain stays open
    security unlock-keychain -p "$password" "$keychain"
    security import "$certificate" -k "$keychain" -P "${AMPERLY_SIGNING_PASSWORD:-}" -T /usr/bin/codesign
    rm "$certificate"
    security set-key-partition-list -S apple-tool:,apple: -s -k "$password" "$keychain" >/dev/null
    security list-keychains -d user -s "$keychain" ${user_keychains[@]+"${user_keychains[@]}"}
}

# Signs one piece of code. The hardened runtime loads libraries of the same identity only, and signatures for this Mac
# alone have none; a timestamp, too, is for identities that others know.
sign() {
    local options=(--force --sign "$identity")
    if [[ $identity == - ]]; then options+=(--timestamp=none); else options+=(--options runtime --timestamp); fi
    codesign "${options[@]}" "$@"
}

# Hands something to the notary and waits for the answer.
notarise() {
    [[ $identity != - && -n ${AMPERLY_NOTARY_APPLE_ID:-} ]] || return 0
    xcrun notarytool submit "$1" --wait --apple-id "$AMPERLY_NOTARY_APPLE_ID" \
        --team-id "${AMPERLY_NOTARY_TEAM_ID:?}" --password "${AMPERLY_NOTARY_PASSWORD:?}"
}

staple() {
    [[ $identity != - && -n ${AMPERLY_NOTARY_APPLE_ID:-} ]] || return 0
    xcrun stapler staple "$1"
}

rm -rf "$application"
cmake --preset macos-package
cmake --build --preset macos-package
cmake --install build/macos-package-build --prefix "$folder"
[[ -d $application ]] || fail "the build left no application"

[[ -z ${AMPERLY_SIGNING_CERTIFICATE:-} ]] || import_identity

# From the inside out: what is in the bundle before the bundle.
while IFS= read -r -d '' library; do
    sign "$library"
done < <(find "$application/Contents" -type f \( -name '*.dylib' -o -perm -u+x -path '*.framework/Versions/*' \) -print0)
while IFS= read -r -d '' framework; do
    sign "$framework"
done < <(find "$application/Contents/Frameworks" -maxdepth 1 -name '*.framework' -print0)
sign "$application"
codesign --verify --deep --strict --verbose=2 "$application"

version=$(plutil -extract CFBundleShortVersionString raw "$application/Contents/Info.plist")
image=$folder/Amperly-$version.dmg
archive=$folder/Amperly.zip
ditto -c -k --keepParent "$application" "$archive"
notarise "$archive"
staple "$application"
rm "$archive"

# The image holds the application and the way to where applications belong.
contents=$folder/image
rm -rf "$contents" "$image"
mkdir "$contents"
cp -R "$application" "$contents/"
ln -s /Applications "$contents/Applications"
hdiutil create -volname Amperly -srcfolder "$contents" -format UDZO -fs APFS "$image"
rm -rf "$contents"
[[ $identity == - ]] || codesign --force --timestamp --sign "$identity" "$image"
notarise "$image"
staple "$image"
if [[ $identity != - ]]; then spctl --assess --type open --context context:primary-signature --verbose "$image"; fi
printf '%s\n' "$image"
