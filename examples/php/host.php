<?php
// `zentaro host` for PHP: objects whose properties and methods are those of the library, and sell().

class AutomationError extends Exception
{
}

class Host
{
    private $pipes;
    private $process;

    public function __construct()
    {
        $this->process = proc_open(["zentaro", "host"], [["pipe", "r"], ["pipe", "w"], STDERR], $this->pipes);
    }

    public function __destruct()
    {
        fclose($this->pipes[0]); // the objects end, and their ports are closed
        proc_close($this->process);
    }

    public function create(string $class): Automation
    {
        return new Automation($this, $this->request("create", ["class" => $class])["object"]);
    }

    public function request(string $method, array $params, ?callable $progress = null): array
    {
        $request = ["jsonrpc" => "2.0", "id" => 1, "method" => $method, "params" => $params];
        fwrite($this->pipes[0], json_encode($request, JSON_THROW_ON_ERROR) . "\n");
        while (($answer = json_decode(fgets($this->pipes[1]) ?: "null", true)) && isset($answer["method"])) {
            $progress($answer["params"]["text"]);
        }
        if (!isset($answer["result"])) {
            throw new AutomationError($answer["error"]["message"] ?? "zentaro host has ended", $answer["error"]["code"] ?? 0);
        }
        return $answer["result"];
    }
}

class Automation
{
    public function __construct(private Host $host, private int $object)
    {
    }

    public function sell(array $document, string $id, callable $progress): array
    {
        $params = ["object" => $this->object, "document" => $document, "id" => $id, "progress" => true];
        return $this->host->request("sale", $params, $progress);
    }

    public function __get(string $name)
    {
        return $this->wrapped($this->host->request("get", ["object" => $this->object, "name" => $name])["value"]);
    }

    public function __set(string $name, $value): void
    {
        $this->host->request("put", ["object" => $this->object, "name" => $name, "value" => $value]);
    }

    public function __call(string $name, array $args)
    {
        $params = ["object" => $this->object, "name" => $name, "args" => $args];
        return $this->wrapped($this->host->request("call", $params)["value"]);
    }

    private function wrapped($value)
    {
        return match (is_array($value) ? $value["type"] ?? null : null) {
            "object" => new Automation($this->host, $value["object"]),
            "nothing", "empty" => null,
            default => $value,
        };
    }
}
