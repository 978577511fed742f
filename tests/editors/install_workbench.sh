#!/bin/sh
# Packs the extension of VS Code, and installs the workbench that tests start, code-server, below a folder: once, in some minutes.
# Of its native modules those are built that are needed; no other script of a package runs.
set -eu
mkdir -p "$1"
folder=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")/../.." && pwd)

cd "$here/editors/vscode"
[ -d node_modules ] || npm ci --ignore-scripts
npm run package

server=$folder/node_modules/code-server
[ ! -e "$folder/installed" ] || exit 0
npm install --prefix "$folder" --no-save --ignore-scripts --no-audit --no-fund code-server@4.100.3
cd "$server/lib/vscode"
npm install --omit=dev --ignore-scripts --no-audit --no-fund
ln -sfn node_modules node_modules.asar
npm rebuild @vscode/spdlog
build="node $(npm root -g)/npm/node_modules/node-gyp/bin/node-gyp.js rebuild --nodedir=/usr"
[ -e "$(npm root -g)/npm/node_modules/node-gyp" ] || build="node-gyp rebuild --nodedir=/usr"
(cd node_modules/node-pty && $build)
argon2=$folder/node_modules/argon2
[ -d "$argon2" ] || argon2=$server/node_modules/argon2
(cd "$argon2" && $build -- -Dmodule_path="$argon2/lib/binding/napi-v3" -Dmodule_name=argon2 -Dnapi_build_version=3)
touch "$folder/installed"
