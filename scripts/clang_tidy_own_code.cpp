// A plugin that keeps clang-tidy's checks out of system headers: without it they walk all that a
// file includes, where nothing they find is shown, and which is most of their work.
#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Frontend/FrontendPluginRegistry.h>

namespace {

struct NarrowToOwnCode : clang::ASTConsumer {
    void HandleTranslationUnit(clang::ASTContext& context) override {
        std::vector<clang::Decl*> own;
        for (clang::Decl* declaration : context.getTranslationUnitDecl()->decls())
            if (!context.getSourceManager().isInSystemHeader(declaration->getLocation()))
                own.push_back(declaration);
        context.setTraversalScope(own);
    }
};

struct BeforeTheChecks : clang::PluginASTAction {
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance&,
                                                          llvm::StringRef) override {
        return std::make_unique<NarrowToOwnCode>();
    }
    bool ParseArgs(const clang::CompilerInstance&, const std::vector<std::string>&) override {
        return true;
    }
    ActionType getActionType() override { return AddBeforeMainAction; }
};

const clang::FrontendPluginRegistry::Add<BeforeTheChecks> plugin("own-code", "own code only");

}  // namespace
