<?php
// Sells through `zentaro serve`, and asks again under the same id until it is known what came of it.
//   ZENTARO_TOKEN=zt_... php sell.php http://127.0.0.1:8211 caja1 F-000123
[, $service, $printer, $id] = $argv;

$sale = [
    'document' => 'invoice',
    'lines' => [['description' => 'Arepa', 'price' => 10, 'quantity' => 2, 'tax' => 16]],
    'payments' => [['amount' => 30]],
];

function sell(string $service, string $printer, string $id, array $sale, int $attempt): array
{
    $context = stream_context_create(['http' => [
        'method' => 'PUT',
        'header' => 'Authorization: Bearer ' . getenv('ZENTARO_TOKEN') . "\r\nContent-Type: application/json",
        'content' => json_encode(['printer' => $printer, 'attempt' => $attempt, 'sale' => $sale]),
        'ignore_errors' => true,
        'timeout' => 60,
    ]]);
    for (;;) {
        $http_response_header = [];
        $text = @file_get_contents("$service/v1/jobs/$id?wait=20", false, $context);
        $status = (int) (explode(' ', $http_response_header[0] ?? 'none 0')[1]);
        $job = json_decode((string) $text, true);
        if ($status === 200) {
            return $job;
        }
        if ($status >= 400 && $status < 500 && $status !== 429) {
            throw new RuntimeException($job['detail']);
        }
        sleep(1); // not final, or no answer: the same once more, nothing prints twice
    }
}

$job = sell($service, $printer, $id, $sale, 1);
echo $job['state'] === 'printed' ? "printed {$job['number']}, total {$job['total']}\n" : "not printed: {$job['cause']}\n";
