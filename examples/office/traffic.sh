# The servers and clients of this example; sourced by examples/record.
flagged=(127.0.0.9)

servers() {
    serve 18080 "$traffic/httpServer.py"  # the wiki
    serve 12525 "$traffic/lineServer.pl"  # the notes
    serve 15432 "$traffic/tableServer.py" # the ledger
    serve 19999 "$traffic/lineServer.pl"  # a port without a rule
}

clients() {
    page 127.0.0.2 127.0.0.1 18080
    page 127.0.0.2 127.0.0.1 18080
    table 127.0.0.3 15432 "insert into entries values ('chairs', 7)" "select * from entries"
    table 127.0.0.4 15432 "select 1 + 1"
    lines 127.0.0.5 12525 "hello" "a note" "quit"
    lines 127.0.0.9 12525 "hello" "quit"
    page ::1 "[::1]" 18080
    lines 127.0.0.6 19999 "is anybody there" "quit"
    table 127.0.0.7 15432 "select count(*) from entries"
}
