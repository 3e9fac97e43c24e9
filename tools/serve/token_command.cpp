// Adding, listing and removing tokens.
#include "tools/serve/token_command.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "base/terminal/command_line.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "service/http/tokens.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using service::TokenFile;
using terminal::harmless;
using terminal::say;

namespace {

struct TokenWish {
  std::string name, rights = "sell,read", only;
};

// The token alone on standard output, for scripts; what people need besides on standard error.
int addToken(const ServeOptions& options, const TokenWish& wish) {
  TokenFile file{tokensPathOf(options)};
  const std::string token = file.add(wish.name, service::rightsFrom(wish.rights), wish.only);
  std::cout << token << std::endl;
  const std::optional<system::Address> listen = listenAddress(options);
  if (listen && listen->port != 0)
    std::cerr << say("Página: {}\nEl token no se puede ver otra vez.\n",
                     "Page: {}\nThe token cannot be seen again.\n",
                     {"http://" + system::authority(*listen) + "/#token=" + token});
  return exitDone;
}

int removeToken(const ServeOptions& options, const std::string& name) {
  if (TokenFile{tokensPathOf(options)}.remove(name)) return exitDone;
  throw std::runtime_error(
      say("no hay un token de nombre \"{}\"", "there is no token named \"{}\"", {harmless(name)}));
}

int listTokens(const ServeOptions& options) {
  std::size_t width = 0;
  const std::vector<service::Token> tokens = TokenFile{tokensPathOf(options)}.list();
  for (const service::Token& token : tokens)
    width = std::max(width, terminal::columnsOf(harmless(token.name)));
  for (const service::Token& token : tokens)
    std::cout << terminal::padded(harmless(token.name), width) << "  " << service::listOf(token.rights)
              << (token.only.empty() ? "" : "  " + harmless(token.only)) << '\n';
  return exitDone;
}

void addName(CLI::App& command, std::string& name) {
  command.add_option(say("NOMBRE", "NAME"), name, say("Del cliente", "Of the client"))
      ->required()
      ->check(terminal::notEmpty())
      ->type_name("");
}

}  // namespace

void addTokenCommand(CLI::App& serve, const std::shared_ptr<ServeOptions>& options,
                     const std::function<void()>& complete, int& status) {
  CLI::App* token =
      serve.add_subcommand("token", say("Quién puede preguntar al servicio", "Who may ask the service"));
  token->require_subcommand(1);
  const auto wish = std::make_shared<TokenWish>();
  const auto run = [complete, &status](const auto& work) {
    status = guarded([&] {
      complete();
      return work();
    });
  };
  CLI::App* add = token->add_subcommand(
      "add", say("Hace un token y lo muestra una sola vez", "Make a token and show it once"));
  addName(*add, wish->name);
  add->add_option(
         "--rights", wish->rights,
         say("sell (documentos), close (X y Z), resolve (lo que muestra el papel), read; sin ella sell,read",
             "sell (documents), close (X and Z), resolve (what the paper shows), read; without it sell,read",
             {}))
      ->type_name(say("PERMISOS", "RIGHTS"));
  add->add_option("--only", wish->only,
                  say("La única impresora que puede usar y ver", "The one printer that it may use and see"))
      ->type_name(say("IMPRESORA", "PRINTER"));
  add->callback([run, wish, options] { run([&] { return addToken(*options, *wish); }); });
  CLI::App* remove = token->add_subcommand(
      "remove", say("Quita un token; vale en seguida", "Take a token away; it counts at once"));
  addName(*remove, wish->name);
  remove->callback([run, wish, options] { run([&] { return removeToken(*options, wish->name); }); });
  CLI::App* list = token->add_subcommand(
      "list", say("Los nombres y permisos, sin los tokens", "The names and rights, without the tokens"));
  list->callback([run, options] { run([&] { return listTokens(*options); }); });
}

}  // namespace zentaro::tools
