#!/usr/bin/env bash
# Signs a Windows program in place: with the certificate and its key in the file $SIGN_CERTIFICATE (PKCS 12), whose password
# stands in the file $SIGN_PASSWORD_FILE or in $SIGN_PASSWORD. $SIGN_TIMESTAMP may name a time-stamping server (RFC 3161);
# without one the signature ends with the certificate.
#   scripts/sign.sh FILE
set -euo pipefail

signed=$(mktemp -u "$1.XXXXXX")
osslsigncode sign -pkcs12 "$SIGN_CERTIFICATE" -readpass "${SIGN_PASSWORD_FILE:-/dev/stdin}" -h sha256 -n "Corvane Plug-in Manager" \
    ${SIGN_TIMESTAMP:+-ts "$SIGN_TIMESTAMP"} -in "$1" -out "$signed" <<<"${SIGN_PASSWORD:-}"
mv "$signed" "$1"
