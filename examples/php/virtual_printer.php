<?php
// A virtual printer behind COM1; its paper comes out on standard output.
class VirtualPrinter
{
    private string $folder;
    private $process;
    private $pipes;

    public function __construct()
    {
        $this->folder = sys_get_temp_dir() . "/zentaro-" . bin2hex(random_bytes(6));
        mkdir($this->folder, 0700);
        $link = "$this->folder/printer";
        file_put_contents("$this->folder/settings.ini", "[Config\\ModComm]\nCOM1=$link\n");
        putenv("ZENTARO_SETTINGS=$this->folder/settings.ini");
        putenv("ZENTARO_BOOKS=$this->folder/books.db");
        $streams = [["pipe", "r"], STDOUT, ["file", "/dev/null", "w"]];
        $this->process = proc_open(["zentaro-printer", "--link", $link], $streams, $this->pipes);
        while (!file_exists($link) && proc_get_status($this->process)["running"]) {
            usleep(50000);
            clearstatcache();
        }
    }

    public function end(): void
    {
        fwrite($this->pipes[0], "quit\n");
        proc_close($this->process);
        exec("rm -r " . escapeshellarg($this->folder));
    }
}
