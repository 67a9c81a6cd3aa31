#!/usr/bin/env bash
# Layers point down only: a file may include headers of its own folder and
# of the folders below it, never of a folder above. Lists every upward
# include and fails when there is one, or when a folder has no layer yet.
# Usage: tools/check_layers.sh [source folder]
set -euo pipefail
src=${1:-"$(dirname "$0")/../src"}
# Bottom to top.
layers=(platform kernel language scene render image persist animation interaction device sound adaptive app)
declare -A rank
for i in "${!layers[@]}"; do rank[${layers[$i]}]=$i; done
bad=0
for dir in "$src"/*/; do
  folder=$(basename "$dir")
  if [ -z "${rank[$folder]+x}" ]; then
    echo "$folder/: a folder without a layer (add it to tools/check_layers.sh)"
    bad=1
    continue
  fi
  while IFS=: read -r file line text; do
    [[ $text =~ \"([a-z_]+)/ ]] && target=${BASH_REMATCH[1]}
    if [ -z "${rank[$target]+x}" ]; then
      echo "${file#"$src"/}:$line: includes $target/, a folder without a layer"
      bad=1
    elif [ "${rank[$target]}" -gt "${rank[$folder]}" ]; then
      echo "${file#"$src"/}:$line: $folder/ includes $target/, a layer above it"
      bad=1
    fi
  done < <(grep -rnE '^[[:space:]]*#[[:space:]]*include "[a-z_]+/' "$dir" --include='*.h' --include='*.cpp' | sed -E 's/:[[:space:]]*#[[:space:]]*include/:#include/')
done
exit $bad
