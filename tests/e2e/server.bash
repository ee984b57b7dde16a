# For scripts that need a server of the web: lighttpd over a folder, on the loopback. Sourced, not run.

# open_server FOLDER [LINE]: sets `site`, its address, `port`, and `server`, its process, which the
# script ends.
open_server() {
    local i
    port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
    site=http://127.0.0.1:$port
    cat >"$box/server.conf" <<CONF
server.document-root = "$1"
server.bind = "127.0.0.1"
server.port = $port
server.errorlog = "$box/server.log"
mimetype.assign = ("" => "application/octet-stream")
${2:-}
CONF
    /usr/sbin/lighttpd -D -f "$box/server.conf" &
    server=$!
    for ((i = 0; i < 200; ++i)); do
        ! curl -s -o /dev/null "$site/" || return 0
        sleep 0.05
    done
    return 1
}
