<?php
// A small sale that is never printed twice, over `zentaro host`. `php sale.php 2` prints at COM2; without a port it prints on a
// virtual printer.
require __DIR__ . "/host.php";
require __DIR__ . "/virtual_printer.php";

const SALE = [
    "document" => "invoice",
    "customer" => ["name" => "Ana Pérez", "rif" => "V-12345678"],
    "lines" => [
        ["description" => "Café molido", "price" => "12.50", "quantity" => 2, "tax" => 16],
        ["description" => "Queso blanco", "price" => 8, "quantity" => "0.75", "tax" => 0],
    ],
    "payments" => [["amount" => 40]],
];

function sell(int $port): array
{
    $host = new Host();
    $printer = $host->create("Zentaro.CZentaro");
    $printer->CommPort = $port;
    $printer->PortOpen = true;
    // Under an id of the program's own nothing is ever printed twice, also after a power cut.
    return $printer->sell(SALE, "F-1", fn (string $line) => print("$line\n"));
}

/** What is on paper, what is not; else somebody has to look. */
function told(string $verdict): array
{
    return match ($verdict) {
        "printed", "printed-in-part", "already-printed" => ["PRINTED", 0],
        "not-printed", "unreachable", "busy" => ["NOT PRINTED", 3],
        default => [str_starts_with($verdict, "still-") ? "STILL OPEN" : "UNKNOWN", 4],
    };
}

try {
    $paper = isset($argv[1]) ? null : new VirtualPrinter();
    $verdict = sell((int) ($argv[1] ?? 1));
    [$words, $status] = told($verdict["verdict"]);
    echo "$words: number $verdict[number], total $verdict[total]. $verdict[next]\n";
    $paper?->end();
    exit($status);
} catch (Exception $error) {
    fwrite(STDERR, $error->getMessage() . "\n");
    exit(2);
}
