<?php
// A small sale that is never printed twice, over `zentaro host`. `php sale.php 2` prints at COM2; without a port it prints on a
// virtual printer.
require __DIR__ . "/host.php";
require __DIR__ . "/virtual_printer.php";

const SALE = [
    ["IniciarFactura", "Ana Pérez", "V-12345678"],
    ["PasarLineaFactura", "Café molido", 12.5, 2, 16],
    ["PasarLineaFactura", "Queso blanco", 8, 0.75, 0],
    ["RecibirPago", 40],
    ["CerrarComprobante"],
];

/** Done; the first field of an answer is the command that it answers. */
function answered($printer): bool
{
    return $printer->nEnvironmentError === 0 && $printer->response(0) === $printer->nLastCommand;
}

/** The amount sold today in cents; nothing is printed. Null when the printer does not say. */
function sold($printer): ?int
{
    $printer->RealizarCierre(0, false);
    if (!answered($printer)) {
        return null;
    }
    $day = $printer->GetResultadoCierre();
    $cents = 0;
    foreach (["VentasExentas", "BaseGravable1", "BaseGravable2", "BaseGravable3"] as $name) {
        $cents += (int) round(100 * (float) $day->$name["value"]);
    }
    return $cents;
}

/** The status of the document, as soon as an answer is the one to its question; null when that takes longer than half a minute. */
function inStep($printer): ?int
{
    foreach ([0.5, 1, 2, 4, 8, 16] as $pause) {
        usleep((int) ($pause * 1e6)); // late answers gather while the port is open, and opening it throws them away
        try {
            $printer->PortOpen = false;
            $printer->PortOpen = true;
        } catch (AutomationError $error) {
            continue; // an adapter that was pulled out
        }
        $status = $printer->GetStatusHASAR();
        if ($status && answered($printer)) {
            return $status->statusDocumento;
        }
    }
    return null;
}

/** What became of a sale that did not go through: asked, never sent again. */
function settled($printer, int $before): array
{
    $document = inStep($printer);
    if ($document) {
        $printer->CancelarComprobante();
        $document = inStep($printer);
    }
    if ($document) {
        return ["STILL OPEN: have the document cancelled", 4];
    }
    $after = $document === null ? null : sold($printer);
    if ($after === null) {
        return ["UNKNOWN: look at the paper, do not print again", 4];
    }
    return $after > $before ? ["PRINTED", 0] : ["NOT PRINTED", 3];
}

function sell(int $port): array
{
    $host = new Host();
    $printer = $host->create("Zentaro.CZentaro");
    $printer->CommPort = $port;
    $printer->PortOpen = true;
    $printer->verifyCheckSum = true;
    for ($place = random_int(0, 89); $place > 0; --$place) {
        $printer->BuildOMB(0x38, ["*"]); // another place in the sequence than the program before
    }
    $before = inStep($printer) === 0 ? sold($printer) : null;
    if ($before === null) {
        return ["NOT PRINTED: no printer, or a document is open", 3];
    }
    foreach (SALE as $step) {
        $name = array_shift($step);
        echo "$name: ", $printer->$name(...$step), " $printer->sLastError\n";
        if (!answered($printer)) {
            return settled($printer, $before);
        }
    }
    return ["PRINTED", 0];
}

try {
    $paper = isset($argv[1]) ? null : new VirtualPrinter();
    [$text, $status] = sell((int) ($argv[1] ?? 1));
    echo "$text\n";
    $paper?->end();
    exit($status);
} catch (Exception $error) {
    fwrite(STDERR, $error->getMessage() . "\n");
    exit(2);
}
